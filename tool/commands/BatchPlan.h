// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

struct Format;

/*! One file of a batch. */
struct BatchFile
{
    QString input;
    QString output;
    const Format *from = nullptr; /*!< null when it cannot be told; see \c error */
    QString error;
};

/*! Which files a batch reads, and where each goes. */
struct BatchPlan
{
    QVector<BatchFile> files;
    QStringList collisions; /*!< why nothing may be written; empty when all is well */
};

/*! What a batch is made of. */
struct BatchWish
{
    QStringList inputs; /*!< files, and folders for all files below them whose format is read */
    QString into; /*!< folder of the outputs */
    QString from; /*!< name of the format of all inputs; empty: their suffixes tell */
    const Format *to = nullptr;
    bool keepsTree
        = false; /*!< folders below the one that all inputs share come again in \c into */
};

BatchPlan planBatch(const BatchWish &wish);
