#include "windowFixture.h"

#include "saving/save.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <fstream>

namespace shadingTest {

Window::Window() : window(environment())
{
    window.show();
    settle();
}

std::shared_ptr<shading::Environment> Window::environment()
{
    std::string problem;
    auto environment = std::make_shared<shading::Environment>(SHADING_PLUGIN, problem);
    EXPECT_EQ(problem, "");
    return environment;
}

std::string Window::exampleFolder()
{
    return std::string(SHADING_EXAMPLES) + "/documents";
}

shading::Workspace& Window::open(const std::string& name)
{
    const std::string path = name.front() == '/' ? name : exampleFolder() + "/" + name;
    std::vector<shading::Message> messages;
    auto session = shading::Session::open(window.environment(), path, {}, messages);
    EXPECT_TRUE(session) << path;
    shading::Workspace& workspace =
        window.addDocument(std::move(session), std::move(messages))->workspace();
    QObject::connect(&workspace, &shading::Workspace::refused, &window,
                     [this](const QString& subject, const QString& reason) {
                         refusals.append(subject + ": " + reason);
                     });
    settle();
    return workspace;
}

shading::Workspace& Window::openText(const std::string& text, const std::string& name)
{
    const std::string path = folder.filePath(QString::fromStdString(name)).toStdString();
    std::ofstream(path, std::ios::binary) << text;
    return open(path);
}

void Window::settle()
{
    // Timers of no length run too; what is animated or delayed does not count.
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

std::string Window::bytesOf(shading::Workspace& workspace)
{
    std::string bytes;
    std::vector<shading::SaveProblem> problems;
    if (!shading::saveToBytes(workspace.document(), bytes, problems))
        return "refused: " + problems.front().path + ": " + problems.front().reason;
    return bytes;
}

shading::NodePtr Window::node(const std::string& path)
{
    return window.workspace()->document().findNodeFromPath(path.c_str());
}

shading::PortPtr Window::input(const std::string& path)
{
    return window.workspace()->document().findPortFromPath(path.c_str(), ZEL::PortInput,
                                                           ZEL::Container::eSearchNode);
}

shading::PortPtr Window::output(const std::string& path)
{
    return window.workspace()->document().findPortFromPath(path.c_str(), ZEL::PortOutput,
                                                           ZEL::Container::eSearchNode);
}

} // namespace shadingTest
