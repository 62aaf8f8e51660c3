#pragma once

#include "window/documentView.h"
#include "window/mainWindow.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <string>

namespace shadingTest {

/// A window with documents of the sample plugin, and a folder for files.
class Window : public testing::Test {
protected:
    Window();

    /// Opens a document of examples/documents, or one at a whole path.
    shading::Workspace& open(const std::string& name);
    /// Opens a document of that text, from a file in the folder.
    shading::Workspace& openText(const std::string& text, const std::string& name = "text.mtlx");
    /// Runs the event loop until nothing is left to do.
    static void settle();
    /// The bytes that a save would write.
    static std::string bytesOf(shading::Workspace& workspace);
    shading::NodePtr node(const std::string& path);
    shading::PortPtr input(const std::string& path);
    shading::PortPtr output(const std::string& path);

    static std::shared_ptr<shading::Environment> environment();
    static std::string exampleFolder();

    QTemporaryDir folder;
    shading::MainWindow window;
    /// What was refused in the documents opened so far: "SUBJECT: REASON".
    QStringList refusals;
};

} // namespace shadingTest
