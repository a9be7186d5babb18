// SPDX-License-Identifier: MIT
// Compares what programs read from a document:
//   mvrinterop text FILE           the text, a line for each paragraph
//   mvrinterop compare FILE FILE   a table of what differs
// A FILE is an RTF file, read by this library, or a flat OpenDocument text (.fodt).
#include "Content.h"

#include <QFile>
#include <QGuiApplication>

#include <cstdio>

namespace {

bool readFile(const QString &path, Content *content)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    return path.endsWith(QLatin1String(".fodt")) ? readFlatOdt(bytes, content)
                                                 : readRtf(bytes, content);
}

} // namespace

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const QString command = arguments.value(1);
    const bool isText = command == QLatin1String("text") && arguments.size() == 3;
    const bool isCompare = command == QLatin1String("compare") && arguments.size() == 4;
    if (!isText && !isCompare) {
        std::fputs("usage: mvrinterop text FILE | compare FILE FILE\n", stderr);
        return 2;
    }
    Content left;
    Content right;
    if (!readFile(arguments.at(2), &left) || (isCompare && !readFile(arguments.at(3), &right))) {
        std::fputs("mvrinterop: a file cannot be read\n", stderr);
        return 1;
    }
    const QString result = isText ? plainText(left) : compare(left, right);
    std::fputs(result.toUtf8().constData(), stdout);
    return 0;
}
