#include "session/session.h"

#include "testDocument.h"
#include "views/report.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

/// Without a plugin: the registry of those is the process's.
std::shared_ptr<shading::Environment> bareEnvironment()
{
    std::string problem;
    auto environment = std::make_shared<shading::Environment>("/no/such.so", problem);
    EXPECT_EQ("no such file", problem);
    return environment;
}

std::string firstReason(const std::vector<shading::SaveProblem>& problems)
{
    return problems.empty() ? "" : problems.front().reason;
}

TEST(Session, OpensSavesAndKnowsWhatIsSaved)
{
    const TestFile file("<materialx>\n  <n name='a' type='t'/>\n</materialx>\n");
    const TestFile library("<materialx><nodedef name='ND_k' node='k'>"
                           "<output name='out' type='float'/></nodedef></materialx>");
    std::vector<shading::Message> messages;
    auto environment = bareEnvironment();
    EXPECT_TRUE(environment->addLibrary(library.path(), messages));
    EXPECT_FALSE(environment->addLibrary(file.path() + ".no", messages));
    EXPECT_EQ(1U, messages.size());
    auto session = shading::Session::open(environment, file.path(), {}, messages);
    environment.reset(); // The session holds it.
    ASSERT_TRUE(session);
    EXPECT_TRUE(session->isSaved());
    shading::HostNodePtr node;
    EXPECT_TRUE(session->edits().createNode("Top", "k", "b", node));
    EXPECT_FALSE(session->isSaved());
    std::vector<shading::SaveProblem> problems;
    {
        shading::History::Group group(session->edits().history(), {"Open", {}});
        EXPECT_FALSE(session->save(file.path(), problems));
        EXPECT_EQ("an edit is open", firstReason(problems));
    }
    const std::string other = file.path() + ".other";
    EXPECT_TRUE(session->save(other, problems));
    EXPECT_TRUE(session->isSaved());
    EXPECT_EQ(other, session->path());
    EXPECT_NE(std::string::npos, fileBytes(other).find("<k name='b' type='float'"));
    EXPECT_THROW(sessionOn(session->document()), std::logic_error);
    EXPECT_FALSE(shading::Session::open(bareEnvironment(), file.path() + ".no", {}, messages));
}

TEST(Session, ANewDocumentIsMadeForANewFileOnly)
{
    const TestFile file("here already");
    std::vector<shading::Message> messages;
    EXPECT_FALSE(shading::Session::createNew(bareEnvironment(), file.path(), messages));
    ASSERT_EQ(1U, messages.size());
    EXPECT_EQ(file.path() + ":1:1: error: a new document needs a new file, and this one is there",
              shading::messageText(messages.front()));

    const std::string path = file.path() + ".new";
    const auto session = shading::Session::createNew(bareEnvironment(), path, messages);
    ASSERT_TRUE(session);
    EXPECT_TRUE(session->isSaved()); // To leave it loses nothing,
    EXPECT_FALSE(std::filesystem::exists(path));
    std::vector<shading::SaveProblem> problems;
    std::ofstream(path) << "meanwhile";
    EXPECT_FALSE(session->save(path, problems)); // and it takes the place of nothing.
    EXPECT_EQ("the file came up since this new document was begun", firstReason(problems));
    EXPECT_EQ("meanwhile", fileBytes(path));
    std::filesystem::remove(path);
    EXPECT_TRUE(session->save(path, problems));
    EXPECT_EQ("<?xml version=\"1.0\"?>\n<materialx version=\"1.38\">\n</materialx>\n",
              fileBytes(path));
    EXPECT_TRUE(session->save(path, problems)); // Its own by now.
    EXPECT_TRUE(shading::Session::open(bareEnvironment(), path, {}, messages));
}

TEST(Session, KnowsWhatBecameOfItsFile)
{
    using State = shading::Session::FileState;
    const TestFile file("<materialx/>");
    std::vector<shading::Message> messages;
    auto session = shading::Session::open(bareEnvironment(), file.path(), {}, messages);
    ASSERT_TRUE(session);
    EXPECT_EQ(State::Same, session->fileState());
    std::ofstream(file.path()) << "<materialx></materialx>";
    EXPECT_EQ(State::Changed, session->fileState());
    std::vector<shading::SaveProblem> problems;
    EXPECT_TRUE(session->save(file.path(), problems, shading::ChangedFile::Replace));
    EXPECT_EQ(State::Same, session->fileState());
    std::filesystem::remove(file.path());
    EXPECT_EQ(State::Gone, session->fileState());

    const std::string path = file.path() + ".new";
    session = shading::Session::createNew(bareEnvironment(), path, messages);
    EXPECT_EQ(State::Same, session->fileState()); // It has none yet.
    std::ofstream(path) << "meanwhile";
    EXPECT_EQ(State::Changed, session->fileState());
}

} // namespace
