// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxRunEdit_p.h>

#include <finaldraft/file/FdxText_p.h>

#include <algorithm>

namespace {

QByteArray attribute(const char *name, const QByteArray &value)
{
    return QByteArray(" ") + name + "=\"" + value + '"';
}

/*! A word of a run, or a character that is in none. */
struct Word
{
    int start; // in the paragraph's text
    int run;
    QString text;
};

bool isInWord(QChar character)
{
    return character.isLetterOrNumber() || character.isMark() || character.isSurrogate();
}

/*! Appends the words of a run that begins at \a position, as far as they are in [from, to). */
void addWords(const QString &text, int position, int from, int to, int run, QVector<Word> *words)
{
    int start = qMax(0, from - position);
    const int end = qMin(int(text.size()), to - position);
    while (start < end) {
        int next = start;
        while (next < end && isInWord(text.at(next)))
            ++next;
        if (next == start)
            ++next; // runs are cut on either side of it
        words->append({position + start, run, text.mid(start, next - start)});
        start = next;
    }
}

QByteArray fontAttributes(const FdxLook &look)
{
    return attribute("AdornmentStyle", "0")
        + attribute("Background", MVRFinalDraft::toString(look.background).toLatin1())
        + attribute("Color", MVRFinalDraft::toString(look.color).toLatin1())
        + attribute("Font", fdxEscapedValue(look.font)) + attribute("RevisionID", "0")
        + attribute("Size", QByteArray::number(look.size));
}

}

QByteArray fdxRunAttributes(const FdxLook &look, const FdxType &type)
{
    QByteArray attributes;
    if (!look.hasFontOf(type.plain.look)) // all or none, as Final Draft has them
        attributes = fontAttributes(look);
    if (look.style != type.plain.look.style || !attributes.isEmpty())
        attributes += attribute("Style", look.styleText());
    return attributes;
}

QByteArray fdxNewLine(const FdxTree &tree)
{
    const int end = tree.source().indexOf('\n');
    return end > 0 && tree.source()[end - 1] == '\r' ? "\r\n" : "\n";
}

/*! Which piece of changed text goes where. Indexes of changed runs; -1 for none. */
struct FdxRunEdit::Change
{
    QVector<NewRun> pieces;
    int left = -1; // the run that the text in front ends in
    int right = -1; // the run that the text behind begins in
    int toLeft = -1; // piece that goes to the end of the left run
    int toRight = -1; // piece that goes to the start of the right run
    QVector<int> middle; // runs all of whose text was changed
    QVector<int> pieceOf; // for each of them: the piece that it takes
    QVector<int> place; // for each piece that gets a new element: the middle run it stands behind,
                        // as index of middle; -1: behind the left run. -2: no element
};

FdxRunEdit::FdxRunEdit(const FdxScript &script, const FdxElement &paragraph, FdxType &oldType,
                       FdxType &newType, const QVector<FdxNewRun> &runs)
    : m_tree(script.tree())
    , m_paragraph(paragraph)
    , m_type(newType)
{
    int position = 0;
    const QVector<FdxRun> oldRuns = script.runs(paragraph);
    m_old.reserve(oldRuns.size());
    for (const FdxRun &run : oldRuns) {
        OldRun old {run, script.text(run), script.runStyle(oldType, run.node).look,
                    {},  position,         0};
        old.lookInNewType
            = &oldType == &newType ? old.look : script.runStyle(newType, run.node).look;
        position += old.text.size();
        old.end = position;
        m_old.append(old);
    }
    m_new.reserve(runs.size());
    for (const FdxNewRun &run : runs) {
        const FdxLook look = newType.look.with(run.format);
        m_diff.newLength += run.text.size();
        m_new.append({run.text, look, &oldType == &newType ? look : oldType.look.with(run.format),
                      m_diff.newLength});
    }
    m_diff.oldLength = position;
    compare();
}

bool FdxRunEdit::isSameLook(const OldRun &oldRun, const NewRun &newRun)
{
    return oldRun.look == newRun.lookInOldType || oldRun.lookInNewType == newRun.look;
}

/*! How many characters are the same, with the same look, from one of the ends. */
int FdxRunEdit::commonLength(bool fromEnd, int limit) const
{
    int length = 0;
    int oldIndex = 0;
    int newIndex = 0;
    int oldUsed = 0;
    int newUsed = 0;
    while (length < limit) {
        const OldRun &oldRun = m_old[fromEnd ? m_old.size() - 1 - oldIndex : oldIndex];
        const NewRun &newRun = m_new[fromEnd ? m_new.size() - 1 - newIndex : newIndex];
        if (oldUsed == oldRun.text.size()) {
            ++oldIndex;
            oldUsed = 0;
        } else if (newUsed == newRun.text.size()) {
            ++newIndex;
            newUsed = 0;
        } else {
            const int oldPlace = fromEnd ? oldRun.text.size() - 1 - oldUsed : oldUsed;
            const int newPlace = fromEnd ? newRun.text.size() - 1 - newUsed : newUsed;
            const bool isNewPair = oldUsed == 0 || newUsed == 0;
            if (oldRun.text.at(oldPlace) != newRun.text.at(newPlace)
                || (isNewPair && !isSameLook(oldRun, newRun)))
                break;
            ++oldUsed;
            ++newUsed;
            ++length;
        }
    }
    return length;
}

void FdxRunEdit::compare()
{
    const int shorter = qMin(m_diff.oldLength, m_diff.newLength);
    m_diff.prefix = commonLength(false, shorter);
    if (m_diff.isSame())
        return;
    QString oldText;
    for (const OldRun &run : qAsConst(m_old))
        oldText += run.text;
    const auto splitsPair = [&oldText](int place) {
        return place > 0 && place < oldText.size() && oldText.at(place).isLowSurrogate()
            && oldText.at(place - 1).isHighSurrogate();
    };
    // Half a character is no text to write.
    if (m_diff.prefix > 0 && oldText.at(m_diff.prefix - 1).isHighSurrogate())
        --m_diff.prefix;
    m_diff.suffix = commonLength(true, shorter - m_diff.prefix);
    if (splitsPair(m_diff.oldLength - m_diff.suffix))
        --m_diff.suffix;
    alignChange(oldText);
}

/*!
    Text that was only taken away or only added can often be told to begin at several places ("the "
    in front of "two", or "he t"). It begins where a run does, else where a word does.
*/
void FdxRunEdit::alignChange(const QString &oldText)
{
    const int kept = m_diff.prefix + m_diff.suffix;
    if (kept != m_diff.oldLength && kept != m_diff.newLength)
        return;
    QString newText;
    for (const NewRun &run : qAsConst(m_new))
        newText += run.text;
    const QString &longer = kept == m_diff.newLength ? oldText : newText;
    const int length = longer.size() - kept;
    const auto rank = [&](int place) {
        const bool beginsRun
            = std::any_of(m_old.cbegin(), m_old.cend(), [place](const OldRun &run) {
                  return run.start == place && run.start < run.end;
              });
        return beginsRun ? 2 : place == 0 || oldText.at(place - 1).isSpace() ? 1 : 0;
    };
    constexpr int reach = 100; // no word is longer
    int best = m_diff.prefix;
    for (int place = best - 1; place >= qMax(0, m_diff.prefix - reach); --place) {
        if (longer.at(place) != longer.at(place + length))
            break;
        if (rank(place) > rank(best) && !longer.at(place).isLowSurrogate())
            best = place;
    }
    const FdxTextDiff before = m_diff;
    m_diff.prefix = best;
    m_diff.suffix = commonLength(true, kept - best);
    if (m_diff.prefix + m_diff.suffix < kept) // looks are not the same there
        m_diff = before;
}

/*!
    What was changed between the ends that stayed: as several changes where words in between stayed,
    so that these keep their runs.
*/
QVector<FdxRunEdit::Hunk> FdxRunEdit::hunks() const
{
    const Hunk whole {m_diff.prefix, m_diff.oldLength - m_diff.suffix, m_diff.prefix,
                      m_diff.newLength - m_diff.suffix};
    QVector<Word> oldWords;
    QVector<Word> newWords;
    bool isPlain = true; // what a run holds beside text is not cut twice
    int position = 0;
    for (int i = 0; i < m_old.size(); ++i) {
        addWords(m_old[i].text, position, whole.oldStart, whole.oldEnd, i, &oldWords);
        position += m_old[i].text.size();
        isPlain
            = isPlain && !m_tree.slice(m_old[i].run.textStart, m_old[i].run.textEnd).contains('<');
    }
    position = 0;
    for (int i = 0; i < m_new.size(); ++i) {
        addWords(m_new[i].text, position, whole.newStart, whole.newEnd, i, &newWords);
        position += m_new[i].text.size();
    }
    constexpr qint64 maxPairs = 250000;
    if (!isPlain || qint64(oldWords.size()) * newWords.size() > maxPairs)
        return {whole};
    const auto isSame = [&](int i, int j) {
        return oldWords[i].text == newWords[j].text
            && isSameLook(m_old[oldWords[i].run], m_new[newWords[j].run]);
    };
    // The longest common sequence of words, from behind.
    const int width = newWords.size() + 1;
    QVector<int> lengths((oldWords.size() + 1) * width);
    for (int i = oldWords.size(); i-- > 0;) {
        for (int j = newWords.size(); j-- > 0;)
            lengths[i * width + j] = isSame(i, j)
                ? lengths[(i + 1) * width + j + 1] + 1
                : qMax(lengths[(i + 1) * width + j], lengths[i * width + j + 1]);
    }
    QVector<Hunk> found;
    Hunk open = whole;
    const auto close = [&](int oldEnd, int newEnd) {
        if (open.oldStart < oldEnd || open.newStart < newEnd)
            found.append({open.oldStart, oldEnd, open.newStart, newEnd});
    };
    for (int i = 0, j = 0; i < oldWords.size() && j < newWords.size();) {
        if (isSame(i, j)) {
            close(oldWords[i].start, newWords[j].start);
            open.oldStart = oldWords[i].start + oldWords[i].text.size();
            open.newStart = newWords[j].start + newWords[j].text.size();
            ++i;
            ++j;
        } else if (lengths[(i + 1) * width + j] >= lengths[i * width + j + 1]) {
            ++i;
        } else {
            ++j;
        }
    }
    close(whole.oldEnd, whole.newEnd);
    return found;
}

/*! The part of the new runs that is changed text. */
QVector<FdxRunEdit::NewRun> FdxRunEdit::changedRuns(const Hunk &hunk) const
{
    QVector<NewRun> changed;
    int position = 0;
    for (const NewRun &run : m_new) {
        const int from = qMax(hunk.newStart, position);
        const int to = qMin(hunk.newEnd, position + int(run.text.size()));
        if (from < to) {
            NewRun piece = run;
            piece.text = run.text.mid(from - position, to - from);
            if (!changed.isEmpty() && changed.last().look == piece.look)
                changed.last().text += piece.text;
            else
                changed.append(piece);
        }
        position += run.text.size();
    }
    return changed;
}

FdxRunEdit::Change FdxRunEdit::assign(const Hunk &hunk) const
{
    Change change;
    change.pieces = changedRuns(hunk);
    for (int i = 0; i < m_old.size(); ++i) {
        const OldRun &run = m_old[i];
        if (run.start < hunk.oldStart && run.end >= hunk.oldStart)
            change.left = i;
        if (run.end > hunk.oldEnd && run.start <= hunk.oldEnd && change.right < 0)
            change.right = i;
        const bool isInside = run.start >= hunk.oldStart && run.end <= hunk.oldEnd;
        if (isInside && (run.start < run.end || m_diff.oldLength == 0))
            change.middle.append(i);
    }
    change.pieceOf.fill(-1, change.middle.size());
    change.place.fill(-2, change.pieces.size());
    // A change that began within a run goes on in it.
    const bool beginsInLeft = change.left >= 0 && m_old[change.left].end > hunk.oldStart;
    int behind = -1;
    for (int piece = 0; piece < change.pieces.size(); ++piece) {
        const bool fitsLeft = piece == 0 && change.left >= 0
            && isSameLook(m_old[change.left], change.pieces[piece]);
        int host = fitsLeft && beginsInLeft ? change.middle.size() : behind + 1;
        while (host < change.middle.size()
               && !isSameLook(m_old[change.middle[host]], change.pieces[piece]))
            ++host;
        if (host < change.middle.size()) {
            change.pieceOf[host] = piece;
            behind = host;
        } else if (fitsLeft && !(change.pieces.size() == 1 && belongsToRight(hunk, change))) {
            change.toLeft = piece;
        } else if (piece == change.pieces.size() - 1 && change.right >= 0
                   && isSameLook(m_old[change.right], change.pieces[piece])) {
            change.toRight = piece;
        } else {
            change.place[piece] = behind;
        }
    }
    return change;
}

/*! Whether changed text between two runs, either of which it fits, is text of the right one. */
bool FdxRunEdit::belongsToRight(const Hunk &hunk, const Change &change) const
{
    if (change.right < 0 || change.right == change.left
        || !isSameLook(m_old[change.right], change.pieces.first()))
        return false;
    const OldRun &left = m_old[change.left];
    const OldRun &right = m_old[change.right];
    if (hunk.oldStart < hunk.oldEnd)
        return left.end <= hunk.oldStart && right.start < hunk.oldEnd;
    // Nothing went; a word that was made longer at its start does not go to the run in front.
    const QString &text = change.pieces.first().text;
    return text.at(text.size() - 1).isLetterOrNumber() && right.text.at(0).isLetterOrNumber()
        && !left.text.at(left.text.size() - 1).isLetterOrNumber();
}

FdxSplices FdxRunEdit::splices() const
{
    FdxSplices splices;
    const QVector<Hunk> all = m_diff.isSame() ? QVector<Hunk>() : hunks();
    for (const Hunk &hunk : all)
        addHunk(all.size() > 1 ? trimmed(hunk) : hunk, &splices);
    return splices;
}

/*!
    A change of several without what is the same at its ends: a word that goes on in the next run
    is two in the file and one in the document.
*/
FdxRunEdit::Hunk FdxRunEdit::trimmed(Hunk hunk) const
{
    const auto runAt = [](const auto &runs, int place) {
        return std::upper_bound(runs.cbegin(), runs.cend(), place,
                                [](int value, const auto &run) { return value < run.end; });
    };
    const auto isSame = [&](int oldPlace, int newPlace) {
        const auto oldRun = runAt(m_old, oldPlace);
        const auto newRun = runAt(m_new, newPlace);
        const QChar character = oldRun->text.at(oldRun->text.size() - (oldRun->end - oldPlace));
        return character == newRun->text.at(newRun->text.size() - (newRun->end - newPlace))
            && !character.isSurrogate() && isSameLook(*oldRun, *newRun);
    };
    const auto isChange
        = [&hunk] { return hunk.oldStart < hunk.oldEnd && hunk.newStart < hunk.newEnd; };
    for (; isChange() && isSame(hunk.oldStart, hunk.newStart); ++hunk.oldStart)
        ++hunk.newStart;
    for (; isChange() && isSame(hunk.oldEnd - 1, hunk.newEnd - 1); --hunk.oldEnd)
        --hunk.newEnd;
    return hunk;
}

void FdxRunEdit::addHunk(const Hunk &hunk, FdxSplices *splices) const
{
    const Change change = assign(hunk);
    const auto textOf
        = [&](int piece) { return piece < 0 ? QByteArray() : escaped(change.pieces[piece].text); };
    if (change.left >= 0 && change.left == change.right) {
        addSplit(hunk, change, splices);
        return;
    }
    if (change.left >= 0) {
        const OldRun &run = m_old[change.left];
        if (run.end > hunk.oldStart || change.toLeft >= 0)
            splices->append(replaceText(run, hunk.oldStart - run.start, run.end - run.start,
                                        textOf(change.toLeft)));
    }
    addInserted(change, splices);
    // A paragraph without text keeps one empty run.
    const bool isEmptied = m_diff.newLength == 0;
    for (int i = 0; i < change.middle.size(); ++i) {
        const OldRun &run = m_old[change.middle[i]];
        const FdxTree::Span span = m_tree.span(run.run.node);
        if (change.pieceOf[i] >= 0)
            splices->append(setText(run, change.pieces[change.pieceOf[i]].text));
        else if (isEmptied && i == 0)
            splices->append(setText(run, QString()));
        else
            splices->append({m_tree.gapStart(span.start), span.end, QByteArray()});
    }
    if (change.right >= 0) {
        const OldRun &run = m_old[change.right];
        if (run.start < hunk.oldEnd || change.toRight >= 0)
            splices->append(replaceText(run, 0, hunk.oldEnd - run.start, textOf(change.toRight)));
    }
}

/*! A change within one run, which comes apart where something of another look was put in. */
void FdxRunEdit::addSplit(const Hunk &hunk, const Change &change, FdxSplices *splices) const
{
    const OldRun &run = m_old[change.left];
    QByteArray bytes;
    bool isSplit = false;
    for (int piece = 0; piece < change.pieces.size(); ++piece) {
        if (change.place[piece] == -2) {
            if (piece == change.toRight && isSplit)
                bytes += startTag(run);
            bytes += escaped(change.pieces[piece].text);
            continue;
        }
        bytes += (isSplit ? "" : "</Text>") + newElement(change.pieces[piece], &run);
        isSplit = true;
    }
    if (isSplit && change.toRight < 0)
        bytes += startTag(run);
    splices->append(replaceText(run, hunk.oldStart - run.start, hunk.oldEnd - run.start, bytes));
}

void FdxRunEdit::addInserted(const Change &change, FdxSplices *splices) const
{
    for (int piece = 0; piece < change.pieces.size(); ++piece) {
        const int place = change.place[piece];
        if (place == -2)
            continue;
        const int before = place >= 0 ? change.middle[place] : change.left;
        const int model = before >= 0  ? before
            : !change.middle.isEmpty() ? change.middle.first()
                                       : change.right;
        const QByteArray element
            = newElement(change.pieces[piece], model >= 0 ? &m_old[model] : nullptr);
        if (before >= 0) {
            const FdxTree::Span span = m_tree.span(m_old[before].run.node);
            const int gap = m_tree.gapStart(span.start);
            splices->append({span.end, span.end, m_tree.slice(gap, span.start) + element});
        } else if (model >= 0) {
            const int start = m_tree.start(m_old[model].run.node);
            // In front of the white space of a run that goes.
            const bool isGoing = model != change.right && change.pieceOf.value(0) < 0;
            const int gap = m_tree.gapStart(start);
            const QByteArray space = m_tree.slice(gap, start);
            splices->append(isGoing ? FdxSplice {gap, gap, space + element}
                                    : FdxSplice {start, start, element + space});
        } else {
            const int end = m_tree.gapStart(m_tree.span(m_paragraph).innerEnd);
            splices->append({end, end, element});
        }
    }
}

/*! Bytes for the characters [from, to) of a run. */
FdxSplice FdxRunEdit::replaceText(const OldRun &run, int from, int to,
                                  const QByteArray &bytes) const
{
    const QByteArray &source = m_tree.source();
    const int start = run.run.textStart;
    const int end = run.run.textEnd;
    const int first = fdxTextPlace(source, start, end, from);
    const int last = fdxTextPlace(source, start, end, to);
    // Within CDATA there are no references, and what stands between the places would be lost.
    const QByteArray before = m_tree.slice(start, first);
    const bool isInCData = before.lastIndexOf("<![CDATA[") > before.lastIndexOf("]]>");
    if (isInCData || m_tree.slice(first, last).contains('<'))
        return {start, end, escaped(run.text.left(from)) + bytes + escaped(run.text.mid(to))};
    return {first, last, bytes};
}

FdxSplice FdxRunEdit::setText(const OldRun &run, const QString &text) const
{
    if (run.run.textStart < run.run.textEnd || !m_tree.span(run.run.node).isEmptyTag)
        return {run.run.textStart, run.run.textEnd, escaped(text)};
    const int tagEnd = m_tree.tagEnd(run.run.node);
    return {m_tree.gapStart(tagEnd - 2), tagEnd, '>' + escaped(text) + "</Text>"};
}

QByteArray FdxRunEdit::startTag(const OldRun &run) const
{
    const int start = m_tree.start(run.run.node);
    return QByteArray(m_tree.source().constData() + start, m_tree.tagEnd(run.run.node) - start);
}

/*! A Text of its own. \a model is the run beside it, whose other attributes go along. */
QByteArray FdxRunEdit::newElement(const NewRun &run, const OldRun *model) const
{
    const auto alike = std::find_if(m_old.cbegin(), m_old.cend(), [&run](const OldRun &candidate) {
        return isSameLook(candidate, run)
            && candidate.run.node.attribute("AdornmentStyle").value() != "-1"
            && candidate.run.textStart < candidate.run.textEnd;
    });
    if (alike != m_old.cend())
        return startTag(*alike) + escaped(run.text) + "</Text>";
    QByteArray attributes = fdxRunAttributes(run.look, m_type);
    const QByteArray revision
        = model ? model->run.node.attribute("RevisionID").value() : QByteArray();
    if (!revision.isEmpty() && attributes.contains(" RevisionID=\"0\""))
        attributes.replace(" RevisionID=\"0\"", " RevisionID=\"" + revision + '"');
    else if (!revision.isEmpty() && revision != "0")
        attributes += " RevisionID=\"" + revision + '"';
    return "<Text" + attributes + '>' + escaped(run.text) + "</Text>";
}

QByteArray FdxRunEdit::escaped(const QString &text) const
{
    return fdxEscaped(text, fdxNewLine(m_tree));
}
