#include "shading/environments.h"

#include "base/file.h"
#include "binding/error.h"
#include "binding/keepers.h"
#include "binding/shared.h"
#include "shading/problems.h"

#include <cerrno>
#include <optional>
#include <utility>

namespace zelshading {

namespace {

/// How many sets of libraries are kept when no document has them any more.
constexpr std::size_t kKept = 8;

struct LibraryFile {
    std::string path; ///< Without links.
    std::optional<shading::FileStamp> stamp;

    bool operator==(const LibraryFile& other) const
    {
        return path == other.path && stamp == other.stamp;
    }
};

struct KnownOpening {
    std::shared_ptr<shading::Environment> base;
    std::vector<LibraryFile> libraries;
    Opening opening;
};

/// For the life of the process. Never destroyed: documents may live until its end.
struct KnownOpenings {
    Opening plain; ///< Without a plugin. Empty: nobody asked for it.
    Opening withPlugin;
    std::string pluginPath;           ///< Without links.
    std::vector<KnownOpening> others; ///< The one that was asked for last is the last.
};

KnownOpenings& knownOpenings()
{
    static KnownOpenings& known = *new KnownOpenings;
    return known;
}

/// Whoever wraps its runtime keeps it.
std::shared_ptr<shading::Environment> kept(std::unique_ptr<shading::Environment> environment)
{
    const auto drop = [](shading::Environment* dropped) {
        zelpython::forget(dropped->runtime());
        delete dropped;
    };
    std::shared_ptr<shading::Environment> shared(environment.release(), drop);
    zelpython::keep(shared->runtime(), shared);
    return shared;
}

Opening plainOpening()
{
    Opening& plain = knownOpenings().plain;
    if (!plain.environment)
        plain.environment = kept(std::make_unique<shading::Environment>());
    return plain;
}

/// Without the standard plugin, the documents are opened without any; they say so.
Opening pluginOpening(const PluginChoice& plugin)
{
    KnownOpenings& known = knownOpenings();
    const std::string path = shading::canonicalPath(plugin.path);
    const bool isStandard = plugin.kind == PluginChoice::Kind::Standard;
    if (!isStandard && !shading::stampOf(path))
        raiseOSError(errno, plugin.path);
    if (known.withPlugin.environment && known.pluginPath != path)
        zelpython::raiseError(
            "another plugin is loaded, and a process has one: " + known.pluginPath, plugin.path);
    if (known.withPlugin.environment)
        return known.withPlugin;
    std::string problem;
    auto environment = std::make_unique<shading::Environment>(path, problem);
    if (problem.empty()) {
        known.pluginPath = path;
        known.withPlugin.environment = kept(std::move(environment));
        ++zelpython::shared().runtimesInUse;
        return known.withPlugin;
    }
    if (!isStandard)
        zelpython::raiseError(problem, plugin.path);
    Opening plain = plainOpening();
    shading::Message warning;
    warning.file = plugin.path;
    warning.text = problem + "; opened without the plugin";
    plain.messages.push_back(warning);
    return plain;
}

Opening readLibraries(const Opening& base, const std::vector<std::string>& libraries)
{
    Opening opening = {kept(std::make_unique<shading::Environment>(base.environment)),
                       base.messages};
    for (const std::string& path : libraries) {
        if (!opening.environment->addLibrary(path, opening.messages))
            raiseMessages(opening.messages, path);
    }
    return opening;
}

} // namespace

Opening openingWith(const PluginChoice& plugin, const std::vector<std::string>& libraries)
{
    Opening base = plugin.kind == PluginChoice::Kind::None ? plainOpening() : pluginOpening(plugin);
    if (libraries.empty())
        return base;
    std::vector<LibraryFile> files;
    files.reserve(libraries.size());
    for (const std::string& path : libraries)
        files.push_back({shading::canonicalPath(path), shading::stampOf(path)});
    std::vector<KnownOpening>& others = knownOpenings().others;
    for (std::size_t i = 0; i < others.size(); ++i) {
        if (others[i].base != base.environment || !(others[i].libraries == files))
            continue;
        KnownOpening found = others[i];
        others.erase(others.begin() + static_cast<std::ptrdiff_t>(i));
        others.push_back(found);
        return found.opening;
    }
    others.push_back({base.environment, files, readLibraries(base, libraries)});
    if (others.size() > kKept)
        others.erase(others.begin());
    return others.back().opening;
}

} // namespace zelshading
