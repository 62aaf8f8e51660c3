#pragma once

#include "console/console.h"
#include "reading/definitionReader.h"
#include "reading/openDocument.h"
#include "testDocument.h"

#include <memory>
#include <sstream>

/// What reading a document of those elements into the runtime says, one message a line without the
/// folder.
inline std::string readInto(ZEL::Runtime& runtime, const std::string& elements)
{
    const TestFile file("<materialx version='1.39'>" + elements + "</materialx>\n", "d.mtlx");
    std::vector<shading::Message> messages;
    shading::readDefinitions(file.path(), runtime, messages);
    std::string text;
    for (const shading::Message& message : messages)
        text += shading::messageText(message).substr(file.path().size() - 6) + "\n";
    return text;
}

/// A document of those elements that uses the runtime.
inline std::unique_ptr<shading::Document> openWith(ZEL::Runtime* runtime,
                                                   const std::string& elements)
{
    const TestFile file("<materialx version='1.39'>" + elements + "</materialx>\n");
    shading::OpenOptions options;
    options.runtime = runtime;
    std::vector<shading::Message> messages;
    return shading::openDocument(file.path(), options, messages);
}

/// What the commands, one a line, print on both outputs.
inline std::string runIn(shading::Document& document, const std::string& commands)
{
    std::ostringstream out;
    shading::Session session = sessionOn(document);
    shading::Console shell(session, out, out);
    shell.add(shading::viewCommands());
    shell.add(shading::libraryCommands());
    shell.add(shading::editCommands());
    std::istringstream lines(commands);
    std::string line;
    while (std::getline(lines, line))
        shell.run(line);
    return out.str();
}
