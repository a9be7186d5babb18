// SPDX-License-Identifier: MIT
#include <tool/pages/PdfCompletion.h>

#define POINTERHOLDER_TRANSITION 4 // only the standard library's pointers

#include <qpdf/Buffer.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

#include <QUrl>

#include <exception>
#include <map>
#include <string>
#include <vector>

namespace {

/*! Of a dictionary. */
using PdfEntries = std::map<std::string, QPDFObjectHandle>;

/*! The pages of a file and what is known of each. */
class PdfPages
{
public:
    explicit PdfPages(QPDF &pdf)
        : m_pdf(pdf)
        , m_pages(pdf.getAllPages())
    {
    }

    QPDF &pdf() { return m_pdf; }
    bool has(const PdfArea &area) const
    {
        return area.page >= 0 && size_t(area.page) < m_pages.size();
    }
    QPDFObjectHandle page(const PdfArea &area) const { return m_pages[size_t(area.page)]; }

    // PDF counts from the bottom.
    double height(const PdfArea &area) const
    {
        return page(area).getKey("/MediaBox").getArrayItem(3).getNumericValue();
    }

    QPDFObjectHandle rectangle(const PdfArea &area) const
    {
        const double top = height(area);
        return QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(
            area.rect.left(), top - area.rect.bottom(), area.rect.right(), top - area.rect.top()));
    }

    QPDFObjectHandle destination(const PdfArea &area) const
    {
        QPDFObjectHandle target = QPDFObjectHandle::newArray();
        target.appendItem(page(area));
        target.appendItem(QPDFObjectHandle::newName("/XYZ"));
        target.appendItem(QPDFObjectHandle::newReal(area.rect.left()));
        target.appendItem(QPDFObjectHandle::newReal(height(area) - area.rect.top()));
        target.appendItem(QPDFObjectHandle::newNull());
        return target;
    }

    void annotate(const PdfArea &area, const QPDFObjectHandle &annotation)
    {
        QPDFObjectHandle owner = page(area);
        if (!owner.getKey("/Annots").isArray())
            owner.replaceKey("/Annots", QPDFObjectHandle::newArray());
        owner.getKey("/Annots").appendItem(m_pdf.makeIndirectObject(annotation));
    }

private:
    QPDF &m_pdf;
    std::vector<QPDFObjectHandle> m_pages;
};

QPDFObjectHandle textString(const QString &text)
{
    return QPDFObjectHandle::newUnicodeString(text.toStdString());
}

/*! Adds links, which there may be thousands of: what they have in common is one object. */
class LinkWriter
{
public:
    explicit LinkWriter(PdfPages &pages)
        : m_pages(pages)
    {
    }

    void add(const PdfLink &link)
    {
        if (!m_pages.has(link.area) || (link.url.isEmpty() && !m_pages.has(link.target)))
            return;
        PdfEntries annotation = m_common;
        annotation["/Rect"] = m_pages.rectangle(link.area);
        if (link.url.isEmpty())
            annotation["/Dest"] = m_pages.destination(link.target);
        else
            annotation["/A"] = action(link.url);
        m_pages.annotate(link.area, QPDFObjectHandle::newDictionary(annotation));
    }

private:
    QPDFObjectHandle action(const QString &url)
    {
        if (url != m_url) {
            m_url = url;
            const QByteArray encoded = QUrl(url).toEncoded(QUrl::FullyEncoded);
            m_action = QPDFObjectHandle::newDictionary(
                {{"/S", m_actionKind},
                 {"/URI", QPDFObjectHandle::newString(encoded.toStdString())}});
        }
        return m_action;
    }

    PdfPages &m_pages;
    const PdfEntries m_common = {{"/Type", QPDFObjectHandle::newName("/Annot")},
                                 {"/Subtype", QPDFObjectHandle::newName("/Link")},
                                 {"/Border", QPDFObjectHandle::parse("[0 0 0]")}};
    const QPDFObjectHandle m_actionKind = QPDFObjectHandle::newName("/URI");
    QString m_url; // of m_action
    QPDFObjectHandle m_action;
};

// The corners of the marked lines, as readers expect them: left before right, top before bottom.
QPDFObjectHandle corners(const PdfPages &pages, const QVector<PdfArea> &areas)
{
    QPDFObjectHandle corners = QPDFObjectHandle::newArray();
    for (const PdfArea &area : areas) {
        const double height = pages.height(area);
        for (const QPointF &corner : {area.rect.topLeft(), area.rect.topRight(),
                                      area.rect.bottomLeft(), area.rect.bottomRight()}) {
            corners.appendItem(QPDFObjectHandle::newReal(corner.x()));
            corners.appendItem(QPDFObjectHandle::newReal(height - corner.y()));
        }
    }
    return corners;
}

/*! Adds comments as marks over their text, with what they have in common as one object. */
class CommentWriter
{
public:
    explicit CommentWriter(PdfPages &pages)
        : m_pages(pages)
    {
    }

    void add(const PdfComment &comment)
    {
        // An annotation belongs to a page; what a comment marks on the next ones stays unmarked.
        PdfArea whole;
        QVector<PdfArea> areas;
        for (const PdfArea &area : comment.areas) {
            if (!m_pages.has(area) || (!areas.isEmpty() && area.page != whole.page))
                continue;
            whole.page = area.page;
            whole.rect = whole.rect.united(area.rect);
            areas.append(area);
        }
        if (areas.isEmpty())
            return;
        PdfEntries annotation = m_common;
        annotation["/Rect"] = m_pages.rectangle(whole);
        annotation["/QuadPoints"] = corners(m_pages, areas);
        annotation["/Contents"] = textString(comment.text);
        annotation["/C"] = color(comment.color);
        if (!comment.author.isEmpty())
            annotation["/T"] = textString(comment.author);
        if (comment.date.isValid())
            annotation["/M"] = QPDFObjectHandle::newString(
                comment.date.toString(QStringLiteral("'D:'yyyyMMddhhmmss")).toStdString());
        m_pages.annotate(areas.first(), QPDFObjectHandle::newDictionary(annotation));
    }

private:
    QPDFObjectHandle color(const QColor &color)
    {
        if (m_color != color) {
            m_color = color;
            m_channels = QPDFObjectHandle::newArray();
            for (const double channel : {color.redF(), color.greenF(), color.blueF()})
                m_channels.appendItem(QPDFObjectHandle::newReal(channel));
        }
        return m_channels;
    }

    PdfPages &m_pages;
    const PdfEntries m_common = {{"/Type", QPDFObjectHandle::newName("/Annot")},
                                 {"/Subtype", QPDFObjectHandle::newName("/Highlight")},
                                 {"/F", QPDFObjectHandle::newInteger(4)}}; // printed
    QColor m_color; // of m_channels
    QPDFObjectHandle m_channels = QPDFObjectHandle::newArray();
};

/*! Puts entries of an outline below each other as their levels say. */
class OutlineBuilder
{
public:
    explicit OutlineBuilder(PdfPages &pages)
        : m_pages(pages)
    {
        QPDFObjectHandle root = QPDFObjectHandle::newDictionary();
        root.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
        m_open.push_back({0, m_pages.pdf().makeIndirectObject(root), 0});
    }

    void add(const PdfHeading &heading)
    {
        if (!m_pages.has(heading.area))
            return;
        while (m_open.size() > 1 && m_open.back().level >= heading.level)
            close();
        QPDFObjectHandle entry
            = m_pages.pdf().makeIndirectObject(QPDFObjectHandle::newDictionary());
        QPDFObjectHandle parent = m_open.back().entry;
        entry.replaceKey("/Title", textString(heading.text));
        entry.replaceKey("/Parent", parent);
        entry.replaceKey("/Dest", m_pages.destination(heading.area));
        if (parent.hasKey("/Last")) {
            QPDFObjectHandle previous = parent.getKey("/Last");
            previous.replaceKey("/Next", entry);
            entry.replaceKey("/Prev", previous);
        } else {
            parent.replaceKey("/First", entry);
        }
        parent.replaceKey("/Last", entry);
        ++m_open.back().count;
        m_open.push_back({qMax(1, heading.level), entry, 0});
    }

    QPDFObjectHandle finish()
    {
        while (m_open.size() > 1)
            close();
        return close();
    }

private:
    struct Level
    {
        int level;
        QPDFObjectHandle entry;
        int count;
    };

    QPDFObjectHandle close()
    {
        const Level level = m_open.back();
        m_open.pop_back();
        QPDFObjectHandle entry = level.entry;
        if (level.count > 0)
            entry.replaceKey("/Count", QPDFObjectHandle::newInteger(level.count));
        if (!m_open.empty())
            m_open.back().count += level.count;
        return entry;
    }

    PdfPages &m_pages;
    std::vector<Level> m_open;
};

void addOutline(PdfPages &pages, const QVector<PdfHeading> &headings)
{
    if (headings.isEmpty())
        return;
    OutlineBuilder outline(pages);
    for (const PdfHeading &heading : headings)
        outline.add(heading);
    pages.pdf().getRoot().replaceKey("/Outlines", outline.finish());
    pages.pdf().getRoot().replaceKey("/PageMode", QPDFObjectHandle::newName("/UseOutlines"));
}

void addMetadata(QPDF &pdf, const PdfExtras &extras)
{
    QPDFObjectHandle info = pdf.getTrailer().getKey("/Info");
    if (!info.isDictionary()) {
        info = pdf.makeIndirectObject(QPDFObjectHandle::newDictionary());
        pdf.getTrailer().replaceKey("/Info", info);
    }
    if (!extras.title.isEmpty())
        info.replaceKey("/Title", textString(extras.title));
    if (!extras.author.isEmpty())
        info.replaceKey("/Author", textString(extras.author));
}

}

bool completePdf(QByteArray *pdf, const PdfExtras &extras)
{
    try {
        QPDF file;
        file.processMemoryFile("pages", pdf->constData(), size_t(pdf->size()));
        PdfPages pages(file);
        LinkWriter links(pages);
        for (const PdfLink &link : extras.links)
            links.add(link);
        CommentWriter comments(pages);
        for (const PdfComment &comment : extras.comments)
            comments.add(comment);
        addOutline(pages, extras.outline);
        addMetadata(file, extras);
        QPDFWriter writer(file);
        writer.setOutputMemory();
        writer.setObjectStreamMode(qpdf_o_disable);
        writer.setStaticID(true); // equal documents give equal files
        writer.write();
        const std::shared_ptr<Buffer> result = writer.getBufferSharedPointer();
        *pdf = QByteArray(reinterpret_cast<const char *>(result->getBuffer()),
                          int(result->getSize()));
        return true;
    } catch (const std::exception &) {
        return false;
    }
}
