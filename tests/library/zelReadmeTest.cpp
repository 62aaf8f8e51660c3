#include "zel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>

using namespace ZEL;

namespace {

void readmeLines()
{
    // README begins
    struct Document : Container {
        AddRefWrapper<Node> root = Node::createNew(this, "Top");
        AddRefWrapper<Node> getRootNode() override { return root; }
        void rebuildCompounds() override {}
        Runtime* getRuntime() override { return nullptr; }
    } doc;
    AddRefWrapper<Compound> network = Compound::createNew(doc.root, nullptr);
    for (const char* name : {"Load", "Blur"})
        network->nodes().add(Node::createNew(&doc, name));
    AddRefWrapper<PortDataType> image = PortDataType::createNew("image");
    network->nodes()["Load"]->outputs().addPort("Out", image);
    network->nodes()["Blur"]->inputs().addPort("In", image);
    network->makeConnection(network->nodes()["Load"], "Out", network->nodes()["Blur"], "In");
    AddRefWrapper<Port> in = doc.findPortFromPath("Top.Blur.In", PortInput, Container::eSearchNode);
    std::puts(in->connectedTo()[0]->getFullPathName().getName()); // Top.Load.Out
    // README ends
}

/// The lines of the file between the first line that is begin and the next one that is end, each
/// without that many leading characters.
std::string
textBetween(const char* file, const std::string& begin, const std::string& end, std::size_t indent)
{
    std::ifstream stream(std::string(ZEL_SOURCE_DIR "/") + file);
    std::string text;
    std::string line;
    while (std::getline(stream, line) && line != begin) {
    }
    while (std::getline(stream, line) && line != end)
        text += line.substr(std::min(indent, line.size())) + "\n";
    return text;
}

} // namespace

TEST(Readme, LinesConnectAndFind)
{
    testing::internal::CaptureStdout();
    readmeLines();
    EXPECT_EQ("Top.Load.Out\n", testing::internal::GetCapturedStdout());
}

TEST(Readme, ShowsTheLinesCompiledHere)
{
    const std::string compiled = textBetween("tests/library/zelReadmeTest.cpp",
                                             "    // README begins", "    // README ends", 4);
    EXPECT_EQ(15, std::count(compiled.begin(), compiled.end(), '\n'));
    EXPECT_EQ(compiled, textBetween("README.md", "```cpp", "```", 0));
}
