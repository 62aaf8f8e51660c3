#pragma once

#include "zelFuzzInput.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace zelFuzz {

/// What a list of ports or nodes has to hold, as a plain vector. Single answers are compared; only
/// checkAll walks over the list, for a walk closes its holes.
template <class List, class Entry>
class ListModel {
public:
    explicit ListModel(List& list) : m_list(list) { takeOver(); }

    std::vector<Entry*> entries;

    int size() const { return static_cast<int>(entries.size()); }
    bool has(const Entry* entry) const { return placeOf(entry) >= 0; }
    /// Where the entry stands first, -1 when it does not.
    int placeOf(const Entry* entry) const
    {
        const auto found = std::find(entries.begin(), entries.end(), entry);
        return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
    }
    Entry* named(const char* name) const
    {
        const auto found = std::find_if(entries.begin(), entries.end(), [name](Entry* entry) {
            return std::strcmp(entry->getName(), name) == 0;
        });
        return found == entries.end() ? nullptr : *found;
    }
    /// Takes out the first places of the entry.
    void erase(const Entry* entry, int places)
    {
        for (int place = placeOf(entry); places > 0 && place >= 0; place = placeOf(entry)) {
            entries.erase(entries.begin() + place);
            --places;
        }
    }
    void takeOver()
    {
        entries.clear();
        for (Entry* const entry : m_list)
            entries.push_back(entry);
    }

    void checkSize() const
    {
        expect(m_list.size() == size(), [this] {
            return "a list has " + std::to_string(m_list.size()) + " entries, not " +
                   std::to_string(size());
        });
    }
    void checkAt(int place) const
    {
        const bool isIn = place >= 0 && place < size();
        expect(m_list[place].get() == (isIn ? entries[static_cast<std::size_t>(place)] : nullptr),
               [&] { return "another entry at " + std::to_string(place); });
    }
    void checkName(const char* name) const
    {
        expect(m_list[name].get() == named(name),
               [&] { return std::string("the name \"") + name + "\" finds another entry"; });
    }
    void checkAll() const
    {
        checkSize();
        for (int place = -1; place <= size(); ++place)
            checkAt(place);
    }

private:
    List& m_list;
};

} // namespace zelFuzz
