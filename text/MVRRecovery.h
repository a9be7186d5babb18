// SPDX-License-Identifier: MIT
#pragma once

#include <text/MvrTextExport.h>

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVector>

#include <atomic>
#include <functional>
#include <memory>

class QLockFile;
class QTextDocument;
class QThread;

/*!
    Keeps a copy of a text that is not saved yet, for a program that ends before it is.

    A copy is due when nobody has edited for a second and a half, or for a minute of edits. It is
    taken in the thread of the text, which a copy of a document costs, and written in another one.
    Where it cannot be written (the disk is full, the writer gave nothing), the copy before stays,
    and the next edit makes another one due.

    The copies of all windows stand in one folder, "recovery" in QStandardPaths::AppDataLocation,
    each with a lock by which a copy whose program has gone is told from one that is in use.

    \code
    auto *recovery = new MVRRecovery([edit]() -> MVRRecovery::Writer {
        const auto copy = MVRRecovery::detachedCopy(*edit->document());
        return [copy] { return MVRTextDoc::toRtf(copy.get()); };
    }, edit);
    connect(edit, &QTextEdit::textChanged, recovery, [=] { recovery->noteEdit(path, "rtf"); });
    \endcode
*/
class MVRTEXT_EXPORT MVRRecovery : public QObject
{
    Q_OBJECT

public:
    /*! Makes the bytes of a copy, in another thread; none on failure. */
    using Writer = std::function<QByteArray()>;

    /*! What a program left that is no more. */
    struct Copy
    {
        QString file; /*!< path of the copy */
        QString original; /*!< the file that was being edited; empty for one without a name */
        QString record; /*!< path of what names the two */
    };

    /*! \param prepare  takes what is to be written from the text as it stands; null: no copies */
    explicit MVRRecovery(std::function<Writer()> prepare, QObject *parent = nullptr);
    /*! Waits for the copy that is being written; copies stay. */
    ~MVRRecovery() override;

    /*!
        Something was edited: a copy is due when the writer pauses.

        \param original  path of the file that is being edited; empty for none
        \param suffix    of the copy, which says its format
    */
    void noteEdit(const QString &original, const QString &suffix);
    /*! Everything is saved: the copy goes. */
    void drop();
    /*! Has the copy written now, where one is due. */
    void write();
    /*! Waits until the copy that is being written is there. */
    void wait();
    /*! Whether the last copy that was due is there: false while it is written, and where that
        failed. What another program left may go then, for example, when its text was restored. */
    bool isWritten() const;

    /*! The copies that nobody holds, the newest first. */
    static QVector<Copy> leftCopies();
    /*! Deletes a copy. */
    static void remove(const Copy &copy);

    /*! A clone of \a document that belongs to no thread, so that any may write it. */
    static std::shared_ptr<const QTextDocument> detachedCopy(const QTextDocument &document);

private:
    std::function<Writer()> m_prepare;
    QString m_base; // path of the copy and its record, without suffix
    std::unique_ptr<QLockFile> m_lock;
    std::unique_ptr<QThread> m_thread; // that writes
    std::shared_ptr<std::atomic<bool>> m_isWritten;
    QString m_original;
    QString m_suffix;
    QTimer m_pause;
    QElapsedTimer m_due; // since the first edit that no copy has
};
