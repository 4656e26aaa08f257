#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace veldan {

/// The lines of a section by their keys, of which an index may have hundreds of thousands. The standard library's
/// tables take twice as long for them. Texts stay with whoever adds them.
class KeyTable {
public:
    struct Entry {
        std::string_view key;
        std::string_view value;
        std::size_t nLine;
    };

    /// Null where no line has the key. Good until the next addition.
    [[nodiscard]] Entry* Find(std::string_view key);

    /// Adds a line unless there is one with its key. Returns the line that has the key now, good until the next
    /// addition.
    Entry* Add(const Entry& entry);

    /// How many places of names were looked at so far.
    [[nodiscard]] std::size_t Steps() const { return m_nSteps; }

private:
    /// One more than the number of an entry, 0 for none.
    using Place = std::uint32_t;

    struct Slot {
        std::uint32_t nHash = 0;
        Place nPlace = 0;
    };

    [[nodiscard]] Place& PlaceOfName(std::string_view key);
    void Grow();

    std::vector<Entry> m_entries;

    /// The entries whose keys are plain numbers, as most are, by that number.
    std::vector<Place> m_numbers;

    /// All others, each in the first free slot from the one that its hash names on. At most half of them are taken.
    std::vector<Slot> m_slots = std::vector<Slot>(64);
    std::size_t m_nNames = 0;
    std::size_t m_nSteps = 0;
};

}  // namespace veldan
