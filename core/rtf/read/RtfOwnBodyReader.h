// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/lex/RtfTokenizer.h>
#include <core/rtf/model/RtfLists.h>
#include <core/rtf/model/RtfOwnContent.h>

#include <QHash>

#include <optional>
#include <vector>

/*! The paragraphs of a file in the writer's own form, see RtfOwnContentReader. */
class RtfOwnBodyReader
{
public:
    /*!
        \param tokens   behind the first \pard
        \param lists    of the header
        \param content  has the resources of the header, and receives the rest
    */
    RtfOwnBodyReader(RtfTokenizer *tokens, const RtfLists &lists, RtfOwnContent *content)
        : m_tokens(*tokens)
        , m_lists(lists)
        , m_content(*content)
        , m_copied(behindWord())
    {
    }

    /*! \return false for any other file; the content is of no use then */
    bool read();

private:
    enum Group { Paragraphs, Run, Field, Instruction, Result, Name, Picture };
    enum Use { FormatsParagraph, FormatsRun, IsText, DescribesPicture };
    struct Word
    {
        Use use;
        bool hasNumber;
        std::optional<RtfOwnContent::Kind> reference; // for a number that the header explains
    };

    /*! How far a paragraph, and a run in it, has come. */
    enum Progress { Formatting, HasContent, Ended };

    /*! The last \par, where the content of a note ends. */
    struct ParagraphEnd
    {
        int at = 0;
        std::size_t references = 0; // before it
        bool isInRun = false;
        bool isRunEmpty = false; // the group holds nothing but the \par
        int runStart = 0;
        int wordsEnd = 0; // of the run's formatting
        std::size_t runReferences = 0; // before the run
        bool isParagraphEmpty = false;
    };

    static std::optional<Word> find(std::string_view name);

    bool take(const RtfToken &token);
    bool takeGroupStart();
    bool takeGroupEnd();
    bool takeWord(const RtfToken &token);
    bool takeText(const RtfToken &token);
    bool takeFormatting(const Word &word, const RtfToken &token);
    bool beginParagraph();
    bool endParagraph(const RtfToken &token);
    bool refer(RtfOwnContent::Kind kind, const RtfToken &token);
    bool isKnown(RtfOwnContent::Kind kind, int number) const;
    bool toList(int *number);
    bool enter(Group group);
    bool beginContent();
    void cutLastEnd();

    // Behind the last word, in front of the blank that ends it.
    const char *behindWord() const { return m_tokens.at() - (m_tokens.at()[-1] == ' ' ? 1 : 0); }
    int offsetOf(const char *at) const
    {
        return m_content.body.size() + static_cast<int>(at - m_copied);
    }
    void copyUpTo(const char *at);

    RtfTokenizer &m_tokens;
    const RtfLists &m_lists;
    RtfOwnContent &m_content;
    const char *m_copied; // up to here the body is copied
    std::vector<Group> m_groups {Paragraphs};
    Progress m_paragraph = Formatting;
    Progress m_run = Ended;
    int m_paragraphs = 0;
    int m_level = 0;
    ParagraphEnd m_end;
    QHash<QPair<int, int>, int> m_listNumbers; // by \ls and \ilvl
};
