#pragma once

#include <string>
#include <vector>

namespace shading {

struct Command;

// The texts of `help`. Commands that were added to the console together stand together.

/// How the command is written: its name, options and arguments.
std::string usageOf(const Command& command);
/// All commands, each with the first sentence of its help, below the titles of their groups.
std::string overviewText(const std::vector<Command>& commands);
/// Everything about one command: usage, help, example.
std::string helpText(const Command& command);
/// The name of the command that the word may be a slip of; empty when none is near.
std::string nearestCommand(const std::vector<Command>& commands, const std::string& word);

} // namespace shading
