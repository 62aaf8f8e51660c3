#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace shading {

/// The scripts of commands that run, one inside the other.
class ScriptStack {
public:
    /// A script and where it stands.
    struct Script {
        std::string path;               ///< As messages name it.
        std::string file;               ///< The same for all ways to name one file.
        std::vector<std::string> lines; ///< Without their ends.
        int line = 0;                   ///< The one that runs, from 1; 0 before the first.
    };

    /// Reads the script and enters it. A path that does not begin at the root of the file system is
    /// taken from the folder of the script that runs; without one from the current folder. False,
    /// with the problem, when it cannot be read, holds what no text has, runs already, or scripts
    /// lie too deep inside each other: nothing changed.
    bool enter(const std::string& path, std::string& problem);
    void leave() { m_scripts.pop_back(); }

    bool isEmpty() const { return m_scripts.empty(); }
    /// The innermost. There must be one; valid until the next enter or leave.
    Script& current() { return m_scripts.back(); }
    /// "FILE:LINE: " of the innermost, empty without one.
    std::string place() const;

private:
    std::string pathFrom(const std::string& path) const;

    std::vector<Script> m_scripts;
};

} // namespace shading
