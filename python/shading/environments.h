#pragma once

#include "session/environment.h"

#include <memory>
#include <string>
#include <vector>

namespace zelshading {

/// What documents are opened with, and what was to be said of the libraries.
struct Opening {
    std::shared_ptr<shading::Environment> environment;
    std::vector<shading::Message> messages;
};

/// Which plugin: the one that came with the package, where it is there; none; or that of a file.
struct PluginChoice {
    enum class Kind {
        Standard,
        None,
        File,
    };
    Kind kind = Kind::Standard;
    std::string path; ///< Of a file; the library's own names the standard one.
};

/// The plugin and the libraries, in their order. Documents of the same ones share what was read,
/// until a library is changed; those of others know nothing of it. Raises OSError and zel.Error for
/// a file that cannot be read, and zel.Error for a second plugin: a process has one.
Opening openingWith(const PluginChoice& plugin, const std::vector<std::string>& libraries);

} // namespace zelshading
