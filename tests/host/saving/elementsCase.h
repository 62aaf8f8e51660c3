#pragma once

#include <string>
#include <vector>

struct ElementsCase {
    const char* name;
    std::string elements;
    const char* commands;
    std::string expected; ///< The elements after it, or the problems.
};

/// Opens the elements of each, runs the commands and saves; then takes them back and saves again.
void checkElements(const std::vector<ElementsCase>& cases);
