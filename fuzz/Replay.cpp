// SPDX-License-Identifier: MIT
// Gives files to fuzz targets without a fuzzer: what was found once is tried by every test run.
// Usage: mvrreplay TARGET FILE-OR-FOLDER...
#include <fuzz/Targets.h>

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdio>

namespace {

struct Target
{
    const char *name;
    void (*run)(const QByteArray &input);
};

#define MVR_FUZZ_ROW(name) {#name, fuzz_##name},
constexpr Target targets[] = {MVR_FUZZ_TARGETS(MVR_FUZZ_ROW)};
#undef MVR_FUZZ_ROW

// A fuzzer's finding is small; one that takes longer, also in a sanitizer build, is one again.
constexpr qint64 longestRun = 20000;

QStringList filesOf(const QStringList &paths)
{
    QStringList files;
    for (const QString &path : paths) {
        if (QFileInfo(path).isFile())
            files.append(path);
        QDirIterator folder(path, QDir::Files);
        while (folder.hasNext())
            files.append(folder.next());
    }
    files.sort();
    return files;
}

bool replay(const Target &target, const QString &path)
{
    std::printf("%s %s\n", target.name, qPrintable(path)); // the last line of a crash
    std::fflush(stdout);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QElapsedTimer timer;
    timer.start();
    target.run(file.readAll());
    if (timer.elapsed() <= longestRun)
        return true;
    std::printf("took %lld ms\n", static_cast<long long>(timer.elapsed()));
    return false;
}

}

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    const QStringList arguments = QCoreApplication::arguments();
    const auto target = std::find_if(std::begin(targets), std::end(targets),
                                     [&arguments](const Target &candidate) {
                                         return arguments.value(1) == QLatin1String(candidate.name);
                                     });
    const QStringList files = filesOf(arguments.mid(2));
    if (target == std::end(targets) || files.isEmpty()) {
        std::fprintf(stderr, "usage: mvrreplay TARGET FILE-OR-FOLDER...\n");
        return 2;
    }
    const bool isGood = std::all_of(files.cbegin(), files.cend(), [&target](const QString &path) {
        return replay(*target, path);
    });
    return isGood ? 0 : 1;
}
