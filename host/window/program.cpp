#include "window/program.h"

#include "document/document.h"
#include "window/appearance.h"
#include "window/documentView.h"
#include "window/drive/driver.h"
#include "window/files/documentFiles.h"
#include "window/files/progressBox.h"
#include "window/files/recentFiles.h"
#include "window/files/recoveryKeeper.h"
#include "window/mainWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <iostream>

namespace shading {

namespace {

void describe(QCommandLineParser& parser)
{
    parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
    parser.addOptions({
        {"plugin", "load this plugin", "PATH"},
        {"library", "read more data types and node definitions", "FILE"},
        {"theme", "light or dark", "THEME"},
        {"screenshot", "write a picture of the window and leave", "FILE.png"},
        {"size", "of the window, in pixels", "WxH"},
        {"compound", "what the picture shows", "PATH"},
        {"script", "run these lines as real input, and leave", "FILE"},
        {"verbose", "print each edit as a command of zelsh"},
        {"keys", "print the table of keys"},
        {"help", "show this text"},
    });
}

bool readSize(const QString& text, QSize& size)
{
    const QStringList parts = text.split('x');
    bool isWidth = false;
    bool isHeight = false;
    if (parts.size() == 2)
        size = {parts[0].toInt(&isWidth), parts[1].toInt(&isHeight)};
    return isWidth && isHeight && size.width() >= 200 && size.height() >= 150 &&
           size.width() <= 16000 && size.height() <= 16000;
}

/// What is wrong is on standard error. Null when the plugin works but a library cannot be read.
std::shared_ptr<Environment> makeEnvironment(const ProgramOptions& options)
{
    std::string problem;
    const std::string plugin =
        options.plugin.isEmpty() ? defaultPluginPath() : options.plugin.toStdString();
    auto environment = std::make_shared<Environment>(plugin, problem);
    if (!problem.empty())
        std::cerr << "zeledit: plugin " << plugin << ": " << problem << "; going on without it\n";
    std::vector<Message> messages;
    bool isRead = true;
    for (const QString& library : options.libraries)
        isRead = environment->addLibrary(library.toStdString(), messages) && isRead;
    for (const Message& message : messages)
        std::cerr << messageText(message) << "\n";
    return isRead ? environment : nullptr;
}

/// What is wrong with it is on standard error.
bool openDocumentIn(MainWindow& window, const QString& path)
{
    std::vector<Message> messages;
    std::unique_ptr<Session> session;
    {
        ProgressBox box(window, QObject::tr("Opening %1").arg(QFileInfo(path).fileName()));
        OpenOptions open;
        open.progress = box.tell();
        session = Session::open(window.environment(), path.toStdString(), open, messages);
    }
    for (const Message& message : messages)
        std::cerr << messageText(message) << "\n";
    if (!session)
        return false;
    window.addDocument(std::move(session), std::move(messages));
    RecentFiles::add(path);
    return true;
}

bool takePicture(MainWindow& window, const ProgramOptions& options)
{
    Workspace* const workspace = window.workspace();
    if (!options.compound.isEmpty()) {
        const NodePtr node =
            workspace ? workspace->document().findNodeFromPath(options.compound.toUtf8()) : nullptr;
        if (!node || !node->isCompound()) {
            std::cerr << "zeledit: " << options.compound.toStdString() << ": no such compound\n";
            return false;
        }
        workspace->enter(node->getAsCompound());
    }
    waitUntilShown(window);
    if (window.grab().save(options.screenshot))
        return true;
    std::cerr << "zeledit: " << options.screenshot.toStdString() << ": cannot be written\n";
    return false;
}

} // namespace

bool readProgramOptions(const QStringList& words, ProgramOptions& options, QString& problem)
{
    QCommandLineParser parser;
    describe(parser);
    if (!parser.parse(QStringList("zeledit") + words)) {
        problem = parser.errorText();
        return false;
    }
    options.documents = parser.positionalArguments();
    options.plugin = parser.value("plugin");
    options.libraries = parser.values("library");
    options.theme = parser.value("theme");
    options.screenshot = parser.value("screenshot");
    options.compound = parser.value("compound");
    options.script = parser.value("script");
    options.isVerbose = parser.isSet("verbose");
    options.wantsHelp = parser.isSet("help");
    options.wantsKeys = parser.isSet("keys");
    if (!options.theme.isEmpty() && options.theme != "light" && options.theme != "dark")
        problem = options.theme + ": neither light nor dark";
    else if (parser.isSet("size") && !readSize(parser.value("size"), options.size))
        problem = parser.value("size") + ": no size such as 1440x900";
    else if (!options.compound.isEmpty() && options.screenshot.isEmpty())
        problem = "--compound says what --screenshot shows, and there is none";
    return problem.isEmpty();
}

QString programUsage()
{
    return "usage: zeledit [OPTION]... [DOCUMENT.mtlx]...\n"
           "A graph editor for shading documents.\n"
           "  --plugin PATH          load this plugin (default: shadingPlugin.so beside the "
           "program)\n"
           "  --library FILE         read more data types and node definitions; may be repeated\n"
           "  --theme light|dark     default: as chosen last, else as the desktop\n"
           "  --screenshot FILE.png  write a picture of the window and leave\n"
           "  --size WxH             the size of the window (default: 1440x900)\n"
           "  --compound PATH        what the picture shows (default: the root)\n"
           "  --script FILE          run these lines as real input; leave with 0 when all held\n"
           "  --verbose              print each edit as the command of zelsh that does the same\n"
           "  --keys                 print the keys as they are without settings\n"
           "  --help                 show this text\n"
           "F1 in the window shows the keys.\n";
}

int runProgram(const ProgramOptions& options)
{
    const bool isAlone = !options.screenshot.isEmpty() || !options.script.isEmpty();
    // Pictures and scripts are the same whatever the user has set, and leave that as it is.
    const QTemporaryDir settings;
    if (isAlone || options.wantsKeys)
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    applyTheme(options.theme.isEmpty() ? chosenTheme() : themeNamed(options.theme));
    const std::shared_ptr<Environment> environment = makeEnvironment(options);
    if (!environment)
        return 1;
    MainWindow window(environment);
    if (options.wantsKeys) {
        std::cout << window.actions().keysTable().toStdString();
        return 0;
    }
    window.resize(options.size);
    window.show();
    bool isGood = true;
    for (const QString& document : options.documents)
        isGood = openDocumentIn(window, document) && isGood;
    if (!isAlone && !isGood && !window.workspace())
        return 1;
    if (!isAlone) {
        window.files().recovery().offer();
        return QApplication::exec();
    }
    Driver driver(window, std::cout, std::cerr, options.isVerbose);
    isGood = isGood && (options.script.isEmpty() || driver.run(options.script));
    return isGood && (options.screenshot.isEmpty() || takePicture(window, options)) ? 0 : 1;
}

} // namespace shading
