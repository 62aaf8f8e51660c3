#include "base/progress.h"

#include "document/names.h"
#include "session/session.h"
#include "testDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace {

using shading::ChangedFile;
using shading::Session;

std::string manyNodes()
{
    std::string text = "<materialx>";
    for (int i = 0; i < 3000; ++i)
        text += "<n name='n" + std::to_string(i) + "' type='t'><input name='i' type='t' " +
                (i > 0 ? "nodename='n" + std::to_string(i - 1) + "'" : "value='1'") + "/></n>";
    return text + "</materialx>";
}

std::unique_ptr<Session> open(const std::string& path, const shading::Progress::Tell& tell = {})
{
    std::string ignored;
    std::vector<shading::Message> messages;
    shading::OpenOptions options;
    options.progress = tell;
    auto session = Session::open(std::make_shared<shading::Environment>("/no/such.so", ignored),
                                 path, options, messages);
    EXPECT_EQ(session ? 0U : 1U, messages.size());
    EXPECT_TRUE(session || messages.front().text == "cancelled");
    return session;
}

std::string textOf(const std::vector<shading::SaveProblem>& problems)
{
    std::string text;
    for (const shading::SaveProblem& problem : problems)
        text += problem.path + ": " + problem.reason + "\n";
    return text;
}

/// Is told, all the way from 0 to 1000, and cancels when it was told so often.
struct Told {
    shading::Progress::Tell tell()
    {
        return [this](int permille) {
            EXPECT_EQ(std::this_thread::get_id(), thread);
            EXPECT_TRUE(all.empty() || all.back() <= permille) << permille;
            all.push_back(permille);
            return limit == 0 || all.size() < limit;
        };
    }
    void expectWhole() const
    {
        ASSERT_LT(50U, all.size());
        EXPECT_GT(100, all.front());
        EXPECT_LE(900, all.back());
        EXPECT_GE(1000, all.back());
    }

    std::size_t limit = 0; ///< 0: none.
    std::vector<int> all;
    std::thread::id thread = std::this_thread::get_id();
};

TEST(Progress, LeadsThroughOpeningSavingAndClosing)
{
    const TestFile file(manyNodes());
    Told opening;
    std::unique_ptr<Session> session = open(file.path(), opening.tell());
    ASSERT_TRUE(session);
    opening.expectWhole();

    ASSERT_TRUE(session->edits().renameNode("Top.n5", "other"));
    Told saving;
    std::vector<shading::SaveProblem> problems;
    EXPECT_TRUE(session->save(file.path(), problems, ChangedFile::Keep, saving.tell()));
    saving.expectWhole();
    EXPECT_NE(std::string::npos, fileBytes(file.path()).find("'other'"));

    ASSERT_TRUE(session->edits().deleteNode("Top.n7"));
    Told closing;
    closing.limit = 1; // A wish that is not heard.
    Session::close(std::move(session), closing.tell());
    EXPECT_LT(10U, closing.all.size());
}

/// However far the work is when it is cancelled, nothing comes of it.
TEST(Progress, CancelsAtAnyTime)
{
    const TestFile file(manyNodes());
    const std::string bytes = fileBytes(file.path());
    std::size_t count = 0;
    for (std::size_t limit = 1; limit < 5000; limit += 1 + limit / 4, ++count) {
        Told told;
        told.limit = limit;
        if (open(file.path(), told.tell()))
            break;
        EXPECT_LE(limit, told.all.size()); // It goes on telling while it cleans up.
    }
    EXPECT_LT(10U, count);

    const std::unique_ptr<Session> session = open(file.path());
    ASSERT_TRUE(session->edits().renameNode("Top.n5", "other"));
    count = 0;
    for (std::size_t limit = 1; limit < 5000; limit += 1 + limit / 4, ++count) {
        Told told;
        told.limit = limit;
        std::vector<shading::SaveProblem> problems;
        if (session->save(file.path(), problems, ChangedFile::Keep, told.tell()))
            break;
        EXPECT_EQ(file.path() + ": cancelled\n", textOf(problems));
        EXPECT_FALSE(session->isSaved());
        EXPECT_EQ(bytes, fileBytes(file.path()));
    }
    EXPECT_LT(10U, count);
    EXPECT_TRUE(session->isSaved());
}

TEST(Progress, KeepsTheDocumentAsItIsWhileItIsSaved)
{
    const TestFile file(manyNodes());
    const std::unique_ptr<Session> session = open(file.path());
    ASSERT_TRUE(session->edits().renameNode("Top.n5", "other"));
    int count = 0;
    const auto meddle = [&](int) {
        std::vector<shading::SaveProblem> problems;
        std::vector<std::string> titles;
        if (++count == 20) {
            EXPECT_FALSE(session->edits().renameNode("Top.n6", "another"));
            EXPECT_EQ("the document is being saved", session->edits().problem().reason);
            EXPECT_FALSE(session->edits().undo(1, titles));
            EXPECT_EQ("the document is being saved", session->edits().problem().reason);
            EXPECT_FALSE(session->save(file.path(), problems));
            EXPECT_FALSE(session->copy({session->document().findNodeFromPath("Top.n6")}, problems));
            EXPECT_EQ("Top: the document is being saved\nTop.n6: the document is being saved\n",
                      textOf(problems));
        }
        return true;
    };
    std::vector<shading::SaveProblem> problems;
    EXPECT_TRUE(session->save(file.path(), problems, ChangedFile::Keep, meddle));
    EXPECT_LT(20, count);
    EXPECT_TRUE(session->edits().renameNode("Top.n6", "another")); // Now it may.
}

TEST(Progress, AwaitsAThreadAndPassesOnWhatItThrows)
{
    Told told;
    shading::Progress progress(told.tell());
    std::thread::id worker;
    progress.await([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
        worker = std::this_thread::get_id();
    });
    EXPECT_NE(told.thread, worker);
    EXPECT_LT(1U, told.all.size());
    EXPECT_THROW(progress.await([] { throw std::runtime_error("no"); }), std::runtime_error);

    shading::Progress silent({});
    silent.await([&] { worker = std::this_thread::get_id(); });
    EXPECT_EQ(told.thread, worker);

    told.limit = 1;
    bool isDone = false;
    const auto work = [&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(60));
        isDone = true;
    };
    EXPECT_THROW(progress.await(work), shading::Cancelled);
    EXPECT_TRUE(isDone);
    EXPECT_NO_THROW(progress.awaitResult(work));
    EXPECT_TRUE(progress.isCancelled());
}

} // namespace
