// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>

class QLockFile;

/*!
    Keeps a copy of what is not saved yet, for a program that ends before it is.

    The copies of all windows stand in one folder, each with a lock by which a copy whose program
    has gone is told from one that is in use.
*/
class Recovery : public QObject
{
    Q_OBJECT

public:
    /*! What a program left that is no more. */
    struct Copy
    {
        QString file;
        QString original; /*!< the file that was being edited; empty for one without a name */
        QString record; /*!< of the two */
    };

    /*! \param write  writes the copy to a path; false on failure */
    Recovery(std::function<bool(const QString &)> write, QObject *parent);
    ~Recovery() override;

    /*! Something was edited: a copy is due when the writer pauses. */
    void noteEdit(const QString &original, const QString &suffix);
    /*! Everything is saved: the copy goes. */
    void drop();
    /*! Writes the copy now, where one is due. */
    void write();

    /*! The copies that nobody holds. */
    static QVector<Copy> leftCopies();
    static void remove(const Copy &copy);

private:
    std::function<bool(const QString &)> m_write;
    QString m_base; // path of the copy and its record, without suffix
    std::unique_ptr<QLockFile> m_lock;
    QString m_original;
    QString m_suffix;
    QTimer m_pause;
    QElapsedTimer m_due; // since the first edit that no copy has
};
