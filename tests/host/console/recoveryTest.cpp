#include "console/recovery.h"

#include "console/recoveryFile.h"
#include "paths.h"
#include "randomEdits.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <thread>

namespace {

namespace fs = std::filesystem;
using shading::findOrphans;
using shading::Orphan;
using shading::Recovery;
using shading::Session;

const char* const kOneNode = "<materialx>\n  <n name='a' type='float'>\n    <input name='i' "
                             "type='float' value='1'/>\n  </n>\n</materialx>\n";

/// A session with its recovery, and a folder that looks as one does after the program died.
class RecoveryTest : public testing::Test {
protected:
    std::unique_ptr<Session> open(const std::string& path)
    {
        std::vector<shading::Message> messages;
        auto session = Session::open(environment, path, {}, messages);
        EXPECT_TRUE(session);
        return session;
    }
    /// The files as they are now, which nobody has locked.
    std::vector<Orphan> kill()
    {
        settle();
        fs::remove_all(dead);
        fs::create_directories(dead);
        for (const auto& entry : fs::directory_iterator(folder))
            fs::copy(entry.path(), dead / entry.path().filename());
        return findOrphans(dead.string());
    }
    std::unique_ptr<Session> recover(const std::vector<Orphan>& orphans)
    {
        EXPECT_EQ(1U, orphans.size());
        said.clear();
        std::vector<shading::Message> messages;
        auto session = orphans.empty()
                           ? nullptr
                           : shading::recover(orphans.front(), environment, {}, messages);
        for (const shading::Message& message : messages)
            said += message.isError ? message.text + "\n" : "";
        return session;
    }
    static std::string bytesOf(Session& session)
    {
        std::string bytes;
        std::vector<shading::SaveProblem> problems;
        if (!shading::saveToBytes(session.document(), bytes, problems)) {
            for (const shading::SaveProblem& problem : problems)
                bytes += problem.path + ": " + problem.reason + "\n";
        }
        return bytes;
    }
    /// What was opened is written in a thread.
    void settle() const
    {
        const auto isPart = [](const auto& e) { return e.path().extension() == ".zelsh"; };
        for (const auto& entry : fs::directory_iterator(folder)) {
            for (int i = 0; isPart(entry) && i < 1000; ++i) {
                if (fs::exists(entry.path().string() + shading::kBaseEnding))
                    break;
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            }
        }
    }

    std::string ignored;
    Session::EnvironmentPtr environment =
        std::make_shared<shading::Environment>("/no/such.so", ignored);
    const TestFile file{kOneNode};
    const fs::path folder = fs::path(file.path()).parent_path() / "state" / "recovery";
    const fs::path dead = fs::path(file.path()).parent_path() / "dead";
    std::string said; ///< The errors of the last recovery.
};

TEST_F(RecoveryTest, KeepsWhatIsNotSaved)
{
    const auto session = open(file.path());
    Recovery recovery(*session, folder.string());
    EXPECT_FALSE(fs::exists(folder)); // Nothing to keep yet.
    ASSERT_TRUE(session->edits().renameNode("Top.a", "b"));
    EXPECT_EQ(fs::perms::owner_all, fs::status(folder).permissions() & fs::perms::mask);
    ASSERT_TRUE(session->edits().setValue("Top.b.i", "2"));
    ASSERT_TRUE(session->edits().setAttribute("Top.b", "doc", "two\nlines 'quoted' # no comment"));
    ASSERT_TRUE(session->edits().renameNode("Top.b", "c"));
    EXPECT_TRUE(findOrphans(folder.string()).empty()); // It is held by this program.

    const std::vector<Orphan> orphans = kill();
    ASSERT_EQ(1U, orphans.size());
    EXPECT_EQ(file.path(), orphans.front().document);
    EXPECT_EQ(4, orphans.front().edits);
    EXPECT_FALSE(orphans.front().isNew);
    const auto recovered = recover(orphans);
    ASSERT_TRUE(recovered);
    EXPECT_EQ("", said);
    EXPECT_EQ(bytesOf(*session), bytesOf(*recovered));
    EXPECT_EQ(file.path(), recovered->path());
    EXPECT_FALSE(recovered->isSaved());
    ASSERT_EQ(4, recovered->edits().history().undoCount());
    EXPECT_EQ("Rename b to c", recovered->edits().history().names().back().title);
    std::vector<shading::SaveProblem> problems;
    EXPECT_TRUE(recovered->save(file.path(), problems)); // The file is the one it knows.
    EXPECT_TRUE(shading::discard(orphans.front()));
    EXPECT_TRUE(fs::is_empty(dead));
}

TEST_F(RecoveryTest, FollowsUndoAndSaving)
{
    const auto session = open(file.path());
    Recovery recovery(*session, folder.string());
    std::vector<std::string> titles;
    const auto isKept = [&] { return !fs::is_empty(folder); };
    ASSERT_TRUE(session->edits().renameNode("Top.a", "b"));
    ASSERT_TRUE(session->edits().renameNode("Top.b", "c"));
    ASSERT_TRUE(session->edits().undo(1, titles));
    EXPECT_EQ(bytesOf(*session), bytesOf(*recover(kill())));
    ASSERT_TRUE(session->edits().redo(1, titles));
    EXPECT_EQ(bytesOf(*session), bytesOf(*recover(kill())));
    ASSERT_TRUE(session->edits().undo(2, titles));
    EXPECT_FALSE(isKept()); // It is as it was opened.
    ASSERT_TRUE(session->edits().setValue("Top.a.i", "2"));
    EXPECT_EQ(1, kill().front().edits);

    std::vector<shading::SaveProblem> problems;
    ASSERT_TRUE(session->save(file.path(), problems));
    recovery.update();
    EXPECT_FALSE(isKept());
    // Behind what is saved, and before it: what the document was is no longer in its file.
    ASSERT_TRUE(session->edits().setValue("Top.a.i", "3"));
    EXPECT_EQ(bytesOf(*session), bytesOf(*recover(kill())));
    ASSERT_TRUE(session->edits().undo(2, titles));
    const auto recovered = recover(kill());
    EXPECT_EQ(kOneNode, bytesOf(*recovered));
    EXPECT_FALSE(recovered->isSaved());
    EXPECT_TRUE(recovered->save(file.path(), problems));
}

/// Who is told before it edits too, or asks it to look.
TEST_F(RecoveryTest, WritesEachEditOnceWhoeverIsToldFirst)
{
    const auto session = open(file.path());
    Recovery* kept = nullptr;
    int count = 0;
    const auto meddle = session->edits().history().observe([&](const shading::Change&) {
        kept->update();
        std::vector<std::string> titles;
        if (++count == 1) {
            session->edits().renameNode("Top.b", "c");
            session->edits().undo(1, titles);
            session->edits().renameNode("Top.b", "d");
        }
    });
    Recovery recovery(*session, folder.string());
    kept = &recovery;
    ASSERT_TRUE(session->edits().renameNode("Top.a", "b"));
    const std::vector<Orphan> orphans = kill();
    EXPECT_EQ(2, orphans.front().edits);
    EXPECT_EQ(bytesOf(*session), bytesOf(*recover(orphans)));
    EXPECT_EQ("", said);
}

TEST_F(RecoveryTest, LeavesNothingBehindWhenTheDocumentIsClosed)
{
    const auto session = open(file.path());
    {
        Recovery recovery(*session, folder.string());
        ASSERT_TRUE(session->edits().renameNode("Top.a", "b"));
        EXPECT_EQ("", recovery.problem());
    }
    EXPECT_TRUE(fs::is_empty(folder));

    std::ofstream(folder / "no.zelsh") << "# another script\nundo\n";
    EXPECT_TRUE(findOrphans(folder.string()).empty());
    EXPECT_TRUE(findOrphans((folder / "none").string()).empty());
    // A folder that cannot be made disturbs nobody.
    Recovery recovery(*session, (folder / "no.zelsh" / "folder").string());
    EXPECT_NE("", recovery.problem());
    EXPECT_TRUE(session->edits().renameNode("Top.b", "c"));
}

TEST_F(RecoveryTest, SaysWhatCannotBeRecovered)
{
    const auto session = open(file.path());
    Recovery recovery(*session, folder.string());
    ASSERT_TRUE(session->edits().renameNode("Top.a", "b"));
    ASSERT_TRUE(session->edits().run({"Strange", {}}, "b", [&] {
        session->document().findNodeFromPath("Top.b")->setName("strange");
        return "";
    }));
    const auto recovered = recover(kill());
    ASSERT_TRUE(recovered);
    EXPECT_EQ("not all is recovered: edit 2 of 2, \"Strange\", could not be done again: no command "
              "does it\n",
              said);
    EXPECT_TRUE(recovered->document().findNodeFromPath("Top.b"));

    // The end of a file that was being written, and a document that somebody changed since.
    const std::vector<Orphan> orphans = kill();
    const std::string kept = fileBytes(orphans.front().file);
    fs::resize_file(orphans.front().file, kept.size() - 3);
    EXPECT_EQ(1, findOrphans(dead.string()).front().edits);
    fs::remove(orphans.front().file + shading::kBaseEnding);
    EXPECT_TRUE(recover(findOrphans(dead.string()))); // The file itself is as it was.
    std::ofstream(file.path()) << "<materialx/>";
    EXPECT_FALSE(recover(findOrphans(dead.string())));
    EXPECT_EQ("the edits cannot be done again: the file was changed since\n", said);
}

TEST_F(RecoveryTest, KeepsANewDocument)
{
    const std::string path = file.path() + ".new";
    std::vector<shading::Message> messages;
    const auto session = Session::createNew(environment, path, messages);
    Recovery recovery(*session, folder.string());
    shading::HostNodePtr node;
    ASSERT_TRUE(session->edits().createNode("Top", "nodegraph", "g", node));
    const std::vector<Orphan> orphans = kill();
    EXPECT_TRUE(orphans.front().isNew);
    const auto recovered = recover(orphans);
    EXPECT_EQ(bytesOf(*session), bytesOf(*recovered));
    std::vector<shading::SaveProblem> problems;
    std::ofstream(path) << "meanwhile";
    EXPECT_FALSE(recovered->save(path, problems));
    fs::remove(path);
    EXPECT_TRUE(recovered->save(path, problems));
}

/// Whatever is edited, undone and done again: what is recovered saves the same bytes.
TEST_F(RecoveryTest, DoesRandomEditsAgainExactly)
{
    std::vector<shading::Message> messages;
    std::vector<std::string> paths;
    const char* const extra = std::getenv("SHADING_EXTRA_DOCUMENTS");
    for (const auto& entry :
         fs::recursive_directory_iterator(extra ? std::string(extra) : paths::kDocuments)) {
        if (entry.path().extension() == ".mtlx")
            paths.push_back(entry.path().string());
    }
    for (const std::string& path : paths)
        environment->addLibrary(path, messages);
    for (const std::string& path : paths) {
        const auto session = open(path);
        Recovery recovery(*session, folder.string());
        const char* const seed = std::getenv("SHADING_SEED");
        RandomEdits random(*session, seed ? static_cast<unsigned>(std::atoi(seed)) : 1U);
        std::string log;
        for (int i = 0; i < 120; ++i) {
            log += random.step() + "\n";
            if (i % 20 != 19 || session->isSaved())
                continue;
            SCOPED_TRACE(path + "\n" + log);
            const auto recovered = recover(kill());
            ASSERT_TRUE(recovered);
            ASSERT_EQ("", said);
            ASSERT_EQ(bytesOf(*session), bytesOf(*recovered));
            ASSERT_EQ(session->edits().history().undoCount(),
                      recovered->edits().history().undoCount());
        }
    }
}

} // namespace
