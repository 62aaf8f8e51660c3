#include "window/files/progressBox.h"
#include "window/program.h"

#include <QApplication>
#include <iostream>

namespace {

// What the program returns besides what running it does.
constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;

/// Without a screen there is the platform that paints into memory, for what needs no person.
/// False when there is nowhere to show a window.
bool choosePlatform(bool needsPerson)
{
    const bool hasScreen = qEnvironmentVariableIsSet("DISPLAY") ||
                           qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                           qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (!hasScreen && !needsPerson)
        qputenv("QT_QPA_PLATFORM", "offscreen");
    return hasScreen || !needsPerson;
}

/// Says what Qt says, but for what the platform without a screen says that it cannot do.
void tell(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text)
{
    if (!text.contains("propagateSizeHints") && !text.contains("XDG_RUNTIME_DIR"))
        std::cerr << "zeledit: " << text.toStdString() << std::endl;
}

} // namespace

int main(int argc, char** argv)
{
    QStringList words;
    for (int i = 1; i < argc; ++i)
        words.append(QString::fromLocal8Bit(argv[i]));
    shading::ProgramOptions options;
    QString problem;
    if (!shading::readProgramOptions(words, options, problem)) {
        std::cerr << "zeledit: " << problem.toStdString() << "\n"
                  << shading::programUsage().toStdString();
        return kWrongUsage;
    }
    if (options.wantsHelp) {
        std::cout << shading::programUsage().toStdString();
        return kSuccess;
    }
    const bool needsPerson =
        options.screenshot.isEmpty() && options.script.isEmpty() && !options.wantsKeys;
    if (!choosePlatform(needsPerson)) {
        std::cerr << "zeledit: there is no display to open a window on; --screenshot FILE.png "
                     "writes a picture without one\n";
        return kFailure;
    }
    shading::ProgressBox::prepare();
    qInstallMessageHandler(tell);
    int ownWords = 1; // Qt has a --plugin of its own.
    QApplication application(ownWords, argv);
    QApplication::setStyle("Fusion");
    QApplication::setOrganizationName("zeledit");
    QApplication::setApplicationName("zeledit");
    return shading::runProgram(options);
}
