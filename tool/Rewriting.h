#pragma once

#include <QString>

class CommandLine;
class Progress;
struct Document;
struct Format;

/*!
    What the subcommands have in common that read a document, change it and write it elsewhere: the
    argument IN and the options --output, --from and --as.
*/
class Rewriting
{
public:
    /*! Adds the argument and the options to \a commandLine, which is kept. */
    explicit Rewriting(CommandLine &commandLine);

    /*!
        Takes the files and formats from the parsed command line.

        \param error  receives what is wrong: an unknown format, or a missing output where
                      \a needsOutput says that one is needed
    */
    bool readArguments(bool needsOutput, QString *error);

    /*! False, and said so, when the output is the input itself. */
    bool isSafe() const;

    /*! Reads the input; false when that failed, and said why. */
    bool load(Document &document, Progress &progress) const;
    /*! Writes the output; false when that failed, and said why. */
    bool save(Document &document, Progress &progress) const;
    /*! The same. Notes in the text that the format does not know go out in brackets where
        \a keepsInline says so. */
    bool saveWithNotes(bool keepsInline, Document &document, Progress &progress) const;

private:
    CommandLine &m_commandLine;
    QString m_output;
    const Format *m_from = nullptr;
    const Format *m_to = nullptr;
};
