// SPDX-License-Identifier: MIT
#include <pages/FdxScreenplay_p.h>

#include <core/MVRDomDoc.h>

namespace {

constexpr double pointsPerInch = 72.0;

template <typename Value> void read(const QDomElement &element, const char *name, Value *value)
{
    MVRDomDoc::getAttr(QString::fromLatin1(name), value, element);
}

QDomElement child(const QDomElement &element, const char *name)
{
    return element.firstChildElement(QString::fromLatin1(name));
}

/*! A leading of the whole script, as lines of text that a page of eleven inches has. */
struct DocumentLeading
{
    const char *name;
    double lineHeight; // points
};

constexpr DocumentLeading leadings[] = {
    {"VeryTight", 10.8}, {"Very Tight", 10.8}, {"Tight", 11.4}, {"Normal", 12.0}, {"Loose", 12.6}};

void readPageLayout(const QDomElement &layout, MVRScreenplaySettings &settings)
{
    read(layout, "TopMargin", &settings.topMargin);
    read(layout, "BottomMargin", &settings.bottomMargin);
    read(layout, "HeaderMargin", &settings.headerMargin);
    read(layout, "FooterMargin", &settings.footerMargin);
    read(layout, "BreakDialogueAndActionAtSentences", &settings.breaksAtSentences);
    const QString leading = layout.attribute(QStringLiteral("DocumentLeading"));
    for (const DocumentLeading &row : leadings) {
        if (leading == QLatin1String(row.name))
            settings.lineHeight = row.lineHeight;
    }
    const QDomElement size = child(layout, "PageSize");
    double width = settings.pageSize.width() / pointsPerInch;
    double height = settings.pageSize.height() / pointsPerInch;
    read(size, "Width", &width);
    read(size, "Height", &height);
    settings.pageSize = QSizeF(width, height) * pointsPerInch;
}

void readMoresAndContinueds(const QDomElement &element, MVRScreenplaySettings &settings)
{
    readFdxLook(child(element, "FontSpec"), &settings.continuedLook);
    const QDomElement speech = child(element, "DialogueBreaks");
    read(speech, "AutomaticCharacterContinueds", &settings.continuesSpeakers);
    read(speech, "BottomOfPage", &settings.marksBrokenSpeech);
    read(speech, "TopOfNext", &settings.namesBrokenSpeech);
    read(speech, "DialogueBottom", &settings.moreText);
    read(speech, "DialogueTop", &settings.continuedText);
    const QDomElement scene = child(element, "SceneBreaks");
    read(scene, "SceneBottomOfPage", &settings.marksBrokenScene);
    read(scene, "SceneTopOfNext", &settings.continuesBrokenScene);
    read(scene, "ContinuedNumber", &settings.countsContinueds);
    read(scene, "SceneBottom", &settings.sceneBottomText);
    read(scene, "SceneTop", &settings.sceneTopText);
}

MVRScreenplayHeader readHeader(const QDomElement &element, const char *name)
{
    MVRScreenplayHeader header;
    const auto attribute = [name](const char *rest) { return QByteArray(name) + rest; };
    header.isVisible = true;
    read(element, attribute("Visible").constData(), &header.isVisible);
    read(element, attribute("FirstPage").constData(), &header.isOnFirstPage);
    const QString tag = QStringLiteral("Paragraph");
    const FdxElement model;
    for (QDomElement paragraph = child(element, name).firstChildElement(tag); !paragraph.isNull();
         paragraph = paragraph.nextSiblingElement(tag))
        header.paragraphs.append(readFdxParagraph(paragraph, model));
    return header;
}

void readHeaders(const QDomElement &root, MVRScreenplaySettings &settings)
{
    const QDomElement element = child(root, "HeaderAndFooter");
    if (!element.isNull()) {
        settings.header = readHeader(element, "Header");
        settings.footer = readHeader(element, "Footer");
        read(element, "StartingPage", &settings.startingPage);
    }
    const QDomElement title = child(child(root, "TitlePage"), "HeaderAndFooter");
    if (!title.isNull()) {
        settings.titleHeader = readHeader(title, "Header");
        settings.titleFooter = readHeader(title, "Footer");
    }
}

void readSceneNumbers(const QDomElement &element, MVRScreenplaySettings &settings)
{
    readFdxLook(child(element, "FontSpec"), &settings.numberLook);
    read(element, "ShowNumbersOnLeft", &settings.showsNumbersLeft);
    read(element, "ShowNumbersOnRight", &settings.showsNumbersRight);
    read(element, "LeftLocation", &settings.numberLeft);
    read(element, "RightLocation", &settings.numberRight);
}

void readRevisions(const QDomElement &element, MVRScreenplaySettings &settings)
{
    read(element, "Location", &settings.revisionMark);
    read(element, "ActiveSet", &settings.activeRevision);
    settings.showsActiveRevisionOnly = settings.activeRevision > 0
        && element.attribute(QStringLiteral("RevisionsShown")) == QLatin1String("Active");
    const QString tag = QStringLiteral("Revision");
    for (QDomElement set = element.firstChildElement(tag); !set.isNull();
         set = set.nextSiblingElement(tag)) {
        int id = 0;
        MVRScreenplayRevision revision;
        read(set, "ID", &id);
        read(set, "Name", &revision.name);
        read(set, "Mark", &revision.mark);
        settings.revisions.insert(id, revision);
    }
}

}

MVRScreenplaySettings readFdxSettings(const QDomElement &root)
{
    MVRScreenplaySettings settings;
    readPageLayout(child(root, "PageLayout"), settings);
    readMoresAndContinueds(child(root, "MoresAndContinueds"), settings);
    readHeaders(root, settings);
    readSceneNumbers(child(root, "SceneNumberOptions"), settings);
    readRevisions(child(root, "Revisions"), settings);
    return settings;
}
