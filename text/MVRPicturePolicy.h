// SPDX-License-Identifier: MIT
#pragma once

#include <text/MvrTextExport.h>

#include <QString>

/*!
    Which files a document may have opened by naming them in the codes of linked pictures.

    A document may come from anybody. What it names is opened with the rights of whoever reads it,
    and what it is told apart by (a picture shown, none shown) can leave with the document again. A
    host that reads documents of others gives a policy; one for pasting is narrower as a rule, as
    nobody sees what a clipboard names.

    Shares of other machines ("//server/…", "\\server\…") and the files of devices, processes and
    the kernel are never opened, whatever the policy.
*/
class MVRTEXT_EXPORT MVRPicturePolicy
{
public:
    /*! Any file of this machine; what the operations without a policy allow. */
    static MVRPicturePolicy anywhere();
    /*! No file at all: each picture is a placeholder. */
    static MVRPicturePolicy nowhere();
    /*!
        Files in \a folder and the folders in it. Links of the file system are followed first, so
        that none leads out of it. An empty \a folder, or one that is not there, allows nothing.
    */
    static MVRPicturePolicy below(const QString &folder);

    /*!
        Whether a file may be opened, or looked for.

        \param path  of the file; a relative one starts at the current directory
        \return false also for an empty path; nothing outside the folder is looked at to find out
    */
    bool allows(const QString &path) const;

private:
    bool m_isAnywhere = false;
    QString m_folder; // absolute, with a slash at its end; empty: none
    QString m_canonicalFolder; // the same without links
};
