// SPDX-License-Identifier: MIT
#include <text/MVRRecovery.h>

#include <QtTest>

#include <csignal>

#include <sys/resource.h>

/*! Copies of texts that are not saved, where the system fails, and where programs end. */
class TestRecovery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void keepsNames_data();
    void keepsNames();
    void offersDamagedCopies();
    void keepsTheCopyBefore();
    void leavesOtherFilesAlone();
    void outlivesItsProgram();

private:
    QStringList filesIn(const QString &folder) const
    {
        return QDir(m_data->filePath(folder)).entryList(QDir::Files);
    }

    QScopedPointer<QTemporaryDir> m_data;
};

namespace {

const QString folderOfCopies = QStringLiteral("tst_recovery/recovery");

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/*! Writes a copy of \a text; \return whether it is there. */
bool copyOf(MVRRecovery &recovery, const QString &original = QString(),
            const QString &suffix = QStringLiteral("txt"))
{
    recovery.noteEdit(original, suffix);
    recovery.write();
    recovery.wait();
    return recovery.isWritten();
}

/*! Copies a text until it is killed. */
void writeForever()
{
    char letter = 'a';
    MVRRecovery recovery([&letter]() -> MVRRecovery::Writer {
        letter = letter == 'a' ? 'b' : 'a';
        return [letter] { return QByteArray(300000, letter); };
    });
    for (;;)
        copyOf(recovery, QStringLiteral("/a/b.txt"));
}

}

void TestRecovery::init()
{
    m_data.reset(new QTemporaryDir);
    qputenv("XDG_DATA_HOME", m_data->path().toLocal8Bit());
}

void TestRecovery::keepsNames_data()
{
    QTest::addColumn<QString>("original");
    QTest::addColumn<QString>("suffix");
    QTest::newRow("plain") << "/a folder/b.rtf"
                           << "rtf";
    QTest::newRow("none") << ""
                          << "";
    QTest::newRow("suffix of records") << "/a/b.copy"
                                       << "copy";
    QTest::newRow("suffix of locks") << "/a/b.lock"
                                     << "lock";
    QTest::newRow("another folder") << "/a/b"
                                    << "../../x";
    QTest::newRow("lines") << "/a/\nb\n.c"
                           << "x\ny";
    QTest::newRow("two suffixes") << "/a/b.tar.gz"
                                  << "tar.gz";
}

void TestRecovery::keepsNames()
{
    QFETCH(const QString, original);
    QFETCH(const QString, suffix);

    {
        MVRRecovery recovery([]() -> MVRRecovery::Writer { return [] { return "text"; }; });
        QVERIFY(copyOf(recovery, QStringLiteral("/old.name"), QStringLiteral("old")));
        QVERIFY(copyOf(recovery, original, suffix));
        QVERIFY(MVRRecovery::leftCopies().isEmpty());
    }
    const QVector<MVRRecovery::Copy> left = MVRRecovery::leftCopies();
    QCOMPARE(left.size(), 1);
    QCOMPARE(left[0].original, original);
    QCOMPARE(contentOf(left[0].file), QByteArray("text"));
    MVRRecovery::remove(left[0]);
    QCOMPARE(filesIn(folderOfCopies), QStringList());
}

void TestRecovery::offersDamagedCopies()
{
    for (const QByteArray &record : {QByteArray(), QByteArray("\xff\0\n\n", 4),
                                     QByteArray("../other\n/a/b.txt"), QByteArray(1 << 20, 'a')}) {
        {
            MVRRecovery recovery([]() -> MVRRecovery::Writer { return [] { return "text"; }; });
            QVERIFY(copyOf(recovery, QStringLiteral("/a/b.txt")));
        }
        const QString path = MVRRecovery::leftCopies().value(0).record;
        QVERIFY(record.isNull() ? QFile::remove(path) : write(path, record));
        // What is left of a program that was killed while it wrote.
        QVERIFY(write(path.chopped(4) + QLatin1String("txt.AbCdEf"), "te"));
        const QVector<MVRRecovery::Copy> left = MVRRecovery::leftCopies();
        QCOMPARE(left.size(), 1);
        QCOMPARE(contentOf(left[0].file), QByteArray("text"));
        MVRRecovery::remove(left[0]);
        QCOMPARE(filesIn(folderOfCopies), QStringList());
    }
}

void TestRecovery::keepsTheCopyBefore()
{
    QByteArray text = "short";
    {
        MVRRecovery recovery([&text]() -> MVRRecovery::Writer { return [&text] { return text; }; });
        QVERIFY(copyOf(recovery));
        text = QByteArray(100000, 'a');
        rlimit old = {};
        getrlimit(RLIMIT_FSIZE, &old);
        const rlimit none = {1000, old.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &none);
        const bool isWritten = copyOf(recovery, QString(), QStringLiteral("rtf"));
        setrlimit(RLIMIT_FSIZE, &old);
        QVERIFY(!isWritten);
    }
    QVector<MVRRecovery::Copy> left = MVRRecovery::leftCopies();
    QCOMPARE(left.size(), 1);
    QCOMPARE(contentOf(left[0].file), QByteArray("short"));
    MVRRecovery::remove(left[0]);
    QCOMPARE(filesIn(folderOfCopies), QStringList());
}

/*! Where the folder cannot be made, no other is taken for it. */
void TestRecovery::leavesOtherFilesAlone()
{
    const QString data = m_data->filePath(QStringLiteral("tst_recovery/"));
    QVERIFY(QDir().mkpath(data));
    QVERIFY(write(data + QLatin1String("recovery"), "a file"));
    QVERIFY(write(data + QLatin1String("own.copy"), "own.txt\n"));
    QVERIFY(write(data + QLatin1String("own.txt"), "text"));
    MVRRecovery recovery([]() -> MVRRecovery::Writer { return [] { return "text"; }; });
    QVERIFY(!copyOf(recovery));
    QVERIFY(MVRRecovery::leftCopies().isEmpty());
    recovery.drop();
    MVRRecovery::remove(
        {data + QLatin1String("own.txt"), QString(), data + QLatin1String("own.copy")});
    QCOMPARE(filesIn(QStringLiteral("tst_recovery")).size(), 3);

    // The folder is there again.
    QVERIFY(QFile::remove(data + QLatin1String("recovery")));
    QVERIFY(copyOf(recovery));
    QVERIFY(write(data + QLatin1String("recovery/notes.txt"), "text"));
    QVERIFY(MVRRecovery::leftCopies().isEmpty());
}

void TestRecovery::outlivesItsProgram()
{
    constexpr int kills = 10;
    int found = 0;
    for (int i = 0; i < kills; ++i) {
        QProcess program;
        program.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--write-forever")});
        QVERIFY(program.waitForStarted());
        QTest::qWait(60 + 15 * i);
        program.kill();
        program.waitForFinished();
        for (const MVRRecovery::Copy &copy : MVRRecovery::leftCopies()) {
            const QByteArray text = contentOf(copy.file);
            QVERIFY(text == QByteArray(300000, 'a') || text == QByteArray(300000, 'b'));
            QCOMPARE(copy.original, QStringLiteral("/a/b.txt"));
            MVRRecovery::remove(copy);
            ++found;
        }
        QCOMPARE(filesIn(folderOfCopies), QStringList());
    }
    QVERIFY2(found > kills / 2, QByteArray::number(found));
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tst_recovery"));
    if (application.arguments().contains(QStringLiteral("--write-forever")))
        writeForever();
    TestRecovery test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_recovery.moc"
