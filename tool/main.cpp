// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/Messages.h>
#include <tool/System.h>
#include <tool/Table.h>
#include <tool/Translation.h>
#include <tool/commands/Commands.h>
#include <tool/pages/Pages.h>

#include <core/MVRToolkit.h>

#include <QGuiApplication>
#include <QLoggingCategory>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <system_error>

namespace {

constexpr int helpWidth = 80; // columns; narrower where a terminal is

int runWithinMemory(const CommandLine &commandLine)
{
    try {
        return commandLine.command().run(commandLine);
    } catch (const std::bad_alloc &) {
        printMessage(QString(), Tool::tr("out of memory"));
        return Failure;
    }
}

int widthOfHelp()
{
    const int terminal = Table::terminalWidth();
    return terminal > 0 ? qMin(terminal, helpWidth) : helpWidth;
}

// What needs no document needs no fonts either, which take most of the time to start.
int answer(const QStringList &arguments, const QVector<Command> &commands)
{
    const QString word = arguments.value(0);
    if (word == QLatin1String("-h") || word == QLatin1String("--help")
        || word == QLatin1String("help")) {
        printOutput(helpText(commands, widthOfHelp()));
        return Success;
    }
    if (word == QLatin1String("--completion")) {
        const QString script = completionScript(arguments.value(1), commands);
        if (!script.isEmpty()) {
            printOutput(script);
            return Success;
        }
        printMessage(QString(), Tool::tr("--completion takes bash, zsh or fish"));
    } else {
        printMessage(QString(),
                     word.isEmpty() ? Tool::tr("a command is missing")
                                    : Tool::tr("no command \"%1\"").arg(word));
    }
    printMessage(QString(), Tool::tr("see mvrtext --help"));
    return UsageError;
}

/*! The exit code of a command that is not to run. */
int answer(const CommandLine &commandLine)
{
    if (commandLine.state() == CommandLine::Wrong)
        return commandLine.usageError(commandLine.error());
    printOutput(helpText(commandLine.command(), widthOfHelp()));
    return Success;
}

// Qt calls for memory where no exception may pass; an answer must not ask for more.
[[noreturn]] void endUnexpectedly()
{
    try {
        if (std::current_exception())
            std::rethrow_exception(std::current_exception());
    } catch (const std::bad_alloc &) {
        std::fputs("mvrtext: out of memory\n", stderr);
        std::_Exit(Failure);
    } catch (...) {
    }
    std::abort();
}

// The program shows nothing on a screen: it needs none, whatever the user has chosen for programs
// with windows, and pages have a resolution of their own.
void detachFromScreen()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    qputenv("QT_FONT_DPI", QByteArray::number(Pages::resolution));
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0"); // by which Qt 6 would take that back
}

// Libraries crash where there is no memory for fonts, which they load, and put behind the pages of
// a PDF also where memory has ended: what they take is asked for first.
void checkMemory()
{
    constexpr size_t takenByFonts = 60 << 20; // and by what completes PDF files
    if (!System::hasRoomFor(takenByFonts))
        throw std::bad_alloc();
}

// Messages of the libraries are for developers; QT_LOGGING_RULES brings them back.
void quietLibraries()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default=false\nmvrtext.*.debug=false\n"
                                                    "qt.*.warning=false"));
}

int run(const CommandLine &commandLine)
{
    const QStringList hints = commandLine.hints();
    for (const QString &hint : hints)
        printMessage(QLatin1String(commandLine.command().name), hint);
    return runWithinMemory(commandLine);
}

int runProgram(int argc, char *argv[])
{
    quietLibraries();
    MVRToolkit::useUtf8();
    const QStringList arguments = System::arguments(argc, argv);
    argc = qMin(argc, 1); // Qt would take options of its own out of them, "--style" among these

    const QString word = arguments.value(0);
    if (word == QLatin1String("-v") || word == QLatin1String("--version")) {
        printOutput(QStringLiteral("mvrtext " MVRTEXT_VERSION "\n"));
        return Success;
    }
    const QVector<Command> commands = allCommands();
    const auto command
        = std::find_if(commands.cbegin(), commands.cend(),
                       [&word](const Command &each) { return word == QLatin1String(each.name); });
    if (command == commands.cend()) {
        const QCoreApplication application(argc, argv);
        const Translation translation;
        return answer(arguments, commands);
    }
    const CommandLine commandLine(*command, arguments.mid(1));
    if (commandLine.state() != CommandLine::Ready) {
        const QCoreApplication application(argc, argv);
        const Translation translation;
        return answer(commandLine);
    }
    detachFromScreen();
    checkMemory();
    const QGuiApplication application(argc, argv);
    const Translation translation;
    QCoreApplication::setApplicationName(QStringLiteral("mvrtext"));
    return run(commandLine);
}

}

int main(int argc, char *argv[])
{
    System::prepareStandardStreams();
    System::prepareSignals();
    std::set_terminate(endUnexpectedly);
    try {
        return runProgram(argc, argv);
    } catch (const std::system_error &fault) {
        printMessage(Tool::tr("standard output"),
                     QString::fromLocal8Bit(std::strerror(fault.code().value())));
    }
    return Failure;
}
