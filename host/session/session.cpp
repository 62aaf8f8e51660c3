#include "session/session.h"

#include "base/commandLine.h"
#include "document/names.h"

#include <cerrno>
#include <filesystem>

namespace shading {

namespace {

const char* const kIsSaved = "the document is being saved";

/// Also for a link that leads nowhere: saving would write there.
bool isThere(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

} // namespace

std::unique_ptr<Session> Session::open(const EnvironmentPtr& environment,
                                       const std::string& path,
                                       const OpenOptions& options,
                                       std::vector<Message>& messages)
{
    OpenOptions own = options;
    own.runtime = &environment->runtime();
    std::unique_ptr<Document> document = openDocument(path, own, messages);
    return document ? std::make_unique<Session>(std::move(document), path, environment) : nullptr;
}

std::unique_ptr<Session> Session::openCopy(const EnvironmentPtr& environment,
                                           const std::string& copy,
                                           const std::string& path,
                                           const std::optional<FileStamp>& stamp,
                                           const OpenOptions& options,
                                           std::vector<Message>& messages)
{
    std::unique_ptr<Session> session = open(environment, copy, options, messages);
    if (!session)
        return nullptr;
    session->m_document->files().clear();
    if (stamp)
        session->m_document->files()[canonicalPath(path)] = *stamp;
    session->m_path = path;
    session->m_isNew = !stamp;
    session->m_edits.history().noteUnsaved();
    return session;
}

std::unique_ptr<Session> Session::createNew(const EnvironmentPtr& environment,
                                            const std::string& path,
                                            std::vector<Message>& messages)
{
    if (isThere(path)) {
        Message error;
        error.file = path;
        error.isError = true;
        error.systemError = EEXIST;
        error.text = "a new document needs a new file, and this one is there";
        messages.push_back(error);
        return nullptr;
    }
    OpenOptions options;
    options.runtime = &environment->runtime();
    auto session = std::make_unique<Session>(newDocument(path, options), path, environment);
    session->m_isNew = true;
    return session;
}

Session::Session(std::shared_ptr<Document> document, std::string path, EnvironmentPtr environment)
    : m_environment(std::move(environment)),
      m_document(std::move(document)),
      m_edits(*m_document),
      m_path(std::move(path))
{
}

bool Session::isFree(const std::string& path, std::vector<SaveProblem>& problems)
{
    const auto refuse = [&](const std::string& subject, const std::string& reason) {
        problems.push_back({subject, reason});
        return false;
    };
    if (m_edits.history().isOpen())
        return refuse(pathOf(*m_document->getRootNode()), "an edit is open");
    if (m_edits.history().isHeld())
        return refuse(pathOf(*m_document->getRootNode()), kIsSaved);
    if (m_isNew && path == m_path && isThere(path))
        return refuse(path, "the file came up since this new document was begun");
    return true;
}

bool Session::maySave(const std::string& path,
                      std::vector<SaveProblem>& problems,
                      ChangedFile changed,
                      const Progress::Tell& tell)
{
    if (!isFree(path, problems))
        return false;
    const History::Hold hold(m_edits.history(), kIsSaved);
    return maySaveToFile(*m_document, path, problems, changed, tell);
}

bool Session::save(const std::string& path,
                   std::vector<SaveProblem>& problems,
                   ChangedFile changed,
                   const Progress::Tell& tell)
{
    if (!isFree(path, problems))
        return false;
    {
        const History::Hold hold(m_edits.history(), kIsSaved);
        if (!saveToFile(*m_document, path, problems, changed, tell))
            return false;
    }
    m_edits.history().noteSaved();
    m_path = path;
    m_isNew = false;
    return true;
}

/// Nothing is edited meanwhile.
bool Session::copyText(const std::vector<NodePtr>& nodes,
                       std::string& text,
                       std::vector<SaveProblem>& problems,
                       const Progress::Tell& tell)
{
    if (nodes.empty() || m_edits.history().isHeld()) {
        problems.push_back(nodes.empty() ? SaveProblem{"copy", "no node is named"}
                                         : SaveProblem{pathOf(*nodes.front()), kIsSaved});
        return false;
    }
    const History::Hold hold(m_edits.history(), "the document is being copied");
    return copyToText(*m_document, nodes, text, problems, tell);
}

bool Session::copy(const std::vector<NodePtr>& nodes,
                   std::vector<SaveProblem>& problems,
                   const Progress::Tell& tell)
{
    std::string text;
    if (!copyText(nodes, text, problems, tell))
        return false;
    m_copied = text;
    return true;
}

bool Session::duplicate(const std::vector<NodePtr>& nodes,
                        const PasteOptions& options,
                        std::vector<NodePtr>& made,
                        std::vector<SaveProblem>& problems,
                        const Progress::Tell& tell)
{
    std::string text;
    if (!copyText(nodes, text, problems, tell))
        return false;
    std::vector<std::string> words = {"duplicate"};
    for (const NodePtr& node : nodes)
        words.push_back(pathOf(*node));
    addWords(options, words);
    const std::string what =
        nodes.size() == 1 ? nodes[0]->getName() : std::to_string(nodes.size()) + " nodes";
    History::Group group(m_edits.history(), {"Duplicate " + what, {lineOf(words)}});
    std::string problem;
    const CompoundPtr compound = nodes.front()->getParentCompound();
    if (group.finish(m_edits.paste(compound, text, options, made), problem))
        return true;
    problems.push_back({m_edits.problem().subject, m_edits.problem().reason});
    return false;
}

Session::FileState Session::fileState()
{
    const std::optional<FileStamp> stamp = stampOf(m_path);
    if (!stamp)
        return m_isNew ? FileState::Same : FileState::Gone;
    const auto known = m_document->files().find(canonicalPath(m_path));
    const bool isSame = known != m_document->files().end() && known->second == *stamp;
    return isSame ? FileState::Same : FileState::Changed;
}

std::optional<FileStamp> Session::fileStamp()
{
    const auto known = m_document->files().find(canonicalPath(m_path));
    return known == m_document->files().end() ? std::nullopt : std::optional(known->second);
}

void Session::close(std::unique_ptr<Session> session, const Progress::Tell& tell)
{
    Progress progress(withoutCancel(tell));
    progress.begin(0, 1000, 0);
    session->m_edits.history().release(progress);
    if (session->m_document.use_count() == 1)
        session->m_document->takeApart(progress);
}

} // namespace shading
