// SPDX-License-Identifier: MIT
#include "SampleScreenplay.h"

#include <finaldraft/MVRFinalDraftFile.h>

#include <QBuffer>
#include <QTextBlock>
#include <QTextCursor>

#include <map>
#include <memory>
#include <random>

namespace {

const char *const words[]
    = {"harbour", "lamp",  "slowly", "Ada", "the",         "a",    "over", "tide",
       "nobody",  "looks", "at",     "him", "caf\xC3\xA9", "door", "rain"};

const char *const types[] = {"Scene Heading", "Action", "Character", "Parenthetical", "Dialogue",
                             "Dialogue",      "Action", "Character", "Dialogue",      "Transition"};

const char runAttributes[]
    = " AdornmentStyle=\"0\" Background=\"#FFFFFFFFFFFF\" Color=\"#000000000000\""
      " Font=\"Courier Final Draft\" RevisionID=\"0\" Size=\"12\" Style=\"";

class Generator
{
public:
    QByteArray screenplay(int bytes)
    {
        m_xml
            = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\" ?>\n"
              "<FinalDraft DocumentType=\"Script\" Template=\"No\" Version=\"5\">\n\n  <Content>\n";
        for (int i = 0; m_xml.size() < bytes; ++i)
            addParagraph(types[i % 10]);
        m_xml += "  </Content>\n";
        for (const char *type : {"General", "Scene Heading", "Action", "Character", "Parenthetical",
                                 "Dialogue", "Transition", "Shot"})
            addSettings(type);
        return m_xml + "</FinalDraft>\n";
    }

private:
    int draw(int below) { return int(m_random() % unsigned(below)); }

    QByteArray text(int count)
    {
        QByteArray text;
        for (int i = 0; i < count; ++i)
            text += QByteArray(words[draw(15)]) + ' ';
        return text;
    }

    void addParagraph(const char *type)
    {
        m_xml += QByteArray("    <Paragraph Type=\"") + type + "\">\n      ";
        m_xml += "<Text>" + text(4 + draw(12)) + "</Text>";
        if (draw(12) == 0) { // a word that the spelling check marked
            m_xml
                += "<Text AdornmentStyle=\"-1\">" + text(1) + "</Text><Text>" + text(6) + "</Text>";
        }
        if (draw(25) == 0)
            m_xml += QByteArray("<Text") + runAttributes + "Bold+Italic\">" + text(2) + "</Text>";
        if (draw(100) == 0) {
            m_xml += "<ScriptNote ID=\"1\"><Paragraph Alignment=\"Left\"><Text>" + text(10)
                + "</Text></Paragraph></ScriptNote>";
        }
        m_xml += "\n    </Paragraph>\n";
    }

    void addSettings(const char *type)
    {
        m_xml += QByteArray("  <ElementSettings Type=\"") + type + "\">\n    <FontSpec"
            + runAttributes
            + "\"/>\n    <ParagraphSpec Alignment=\"Left\" FirstIndent=\"0.00\""
              " Leading=\"Regular\" LeftIndent=\"1.50\" RightIndent=\"7.50\""
              " SpaceBefore=\"12\" Spacing=\"1\" StartsNewPage=\"No\"/>\n    <Behavior "
              "PaginateAs=\""
            + type + "\" ReturnKey=\"Action\" Shortcut=\"1\"/>\n  </ElementSettings>\n";
    }

    std::mt19937 m_random {1};
    QByteArray m_xml;
};

}

QByteArray sampleScreenplay(int bytes)
{
    return Generator().screenplay(bytes);
}

QVector<SampleBlock> sampleBlocks(const QTextDocument &document)
{
    QVector<SampleBlock> blocks;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        format.clearProperty(MVRFinalDraftFile::SourceParagraphProperty);
        QVector<SampleRun> runs;
        for (auto it = block.begin(); !it.atEnd(); ++it)
            runs.append({it.fragment().text(), it.fragment().charFormat()});
        blocks.append({format, runs});
    }
    return blocks;
}

void insertByHand(const QVector<SampleBlock> &blocks, QTextDocument *document)
{
    document->setUndoRedoEnabled(false);
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (const SampleBlock &block : blocks) {
        cursor.insertBlock(block.format);
        for (const SampleRun &run : block.runs)
            cursor.insertText(run.text, run.format);
    }
    cursor.endEditBlock();
}

QList<MVRScriptElement>
sampleElements(const QHash<QString, MVRFinalDraft::ElementSettings> &settings)
{
    QList<MVRScriptElement> elements;
    for (const MVRFinalDraft::ElementSettings &setting : settings) {
        MVRScriptElement element(setting.type);
        element.setBlockFormat(setting.parBlockFormat());
        element.setCharFormat(setting.textCharFormat());
        elements.append(element);
    }
    return elements;
}

const Sample &sample(qint64 bytes, ReadSample read)
{
    static std::map<qint64, std::unique_ptr<Sample>> samples;
    std::unique_ptr<Sample> &entry = samples[bytes];
    if (entry)
        return *entry;
    entry = std::make_unique<Sample>();
    entry->xml = sampleScreenplay(int(bytes));
    QBuffer buffer(&entry->xml);
    buffer.open(QIODevice::ReadOnly);
    QHash<QString, MVRFinalDraft::ElementSettings> settings;
    if (!read(&buffer, &entry->document, &settings))
        qFatal("The sample screenplay cannot be read.");
    entry->elements = sampleElements(settings);
    entry->blocks = sampleBlocks(entry->document);
    return *entry;
}
