// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

/*! A file that is not whole yet: it goes with this object, and where a signal ends the program. */
class UnfinishedFile
{
public:
    UnfinishedFile() = default;
    ~UnfinishedFile();
    Q_DISABLE_COPY_MOVE(UnfinishedFile)

    /*! \param name  the file, which may not be there yet and belongs to nobody else */
    void setName(const QByteArray &name);

    /*! The file stays, or never was. */
    void forget();

private:
    struct Place;
    friend void removeUnfinishedFiles();

    static Place *freePlace();

    QByteArray m_name;
    Place *m_place = nullptr; // null for one too many
};

/*! Takes the files of all such objects away. May be called where a signal has come. */
void removeUnfinishedFiles();
