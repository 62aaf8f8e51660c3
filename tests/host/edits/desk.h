#pragma once

#include "console/console.h"
#include "session/session.h"
#include "testDocument.h"
#include "views/report.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>

/// A document in a file, a shell on it, and what the file says after a save.
struct Desk {
    explicit Desk(const std::string& elements, const std::string& attributes = "")
        : file("<materialx version=\"1.39\"" + attributes + ">\n" + elements + "</materialx>\n")
    {
        std::vector<shading::Message> messages;
        document = shading::openDocument(file.path(), {}, messages);
        session = std::make_unique<shading::Session>(document, file.path());
        shell = std::make_unique<shading::Console>(*session, out, out);
        shell->add(shading::viewCommands());
        shell->add(shading::editCommands());
        shell->add(shading::libraryCommands());
        shell->add(shading::fileCommands());
    }

    std::string run(const std::string& commands)
    {
        out.str("");
        std::istringstream lines(commands);
        for (std::string line; std::getline(lines, line);)
            shell->run(line);
        return out.str();
    }

    /// The elements of the file as it is saved.
    std::string saved()
    {
        EXPECT_EQ("", run("save"));
        const std::string bytes = fileBytes(file.path());
        const std::size_t begin = bytes.find('\n') + 1;
        return bytes.substr(begin, bytes.rfind("</materialx>") - begin);
    }

    TestFile file;
    std::shared_ptr<shading::Document> document;
    std::ostringstream out;
    std::unique_ptr<shading::Session> session;
    std::unique_ptr<shading::Console> shell;
};

/// What the shell says once of a graph inside a graph.
inline std::string nestedNote(const std::string& path)
{
    return "note: " + path + ": " + shading::kNested + "\n";
}
