#include "window/mainWindow.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setOrganizationName("zeledit");
    QApplication::setApplicationName("zeledit");
    std::string problem;
    shading::MainWindow window(
        std::make_shared<shading::Environment>(shading::defaultPluginPath(), problem));
    std::vector<shading::Message> messages;
    for (int i = 1; i < argc; ++i) {
        auto session = shading::Session::open(window.environment(), argv[i], {}, messages);
        if (session)
            window.addDocument(std::move(session), messages);
    }
    window.show();
    return QApplication::exec();
}
