#include "storage/KeyTable.h"

#include "platform/core/Random.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>

namespace veldan {

namespace {

/// A polynomial over the text with a variable that is drawn once in a process. Since nobody outside can tell which keys
/// share a value, no file can be made of keys that all do.
std::uint32_t HashOf(std::string_view key) {
    __extension__ using Wide = unsigned __int128;
    constexpr std::uint64_t kPrime = (std::uint64_t{1} << 61U) - 1;
    constexpr std::size_t kChunk = 7;
    static const std::uint64_t s_variable = RandomBits() % kPrime;
    std::uint64_t hash = key.size();
    while (!key.empty()) {
        const std::size_t count = std::min(kChunk, key.size());
        std::uint64_t chunk = 0;
        std::memcpy(&chunk, key.data(), count);
        const Wide product = Wide{hash + chunk} * s_variable;
        hash = (static_cast<std::uint64_t>(product) & kPrime) + static_cast<std::uint64_t>(product >> 61U);
        hash = hash >= kPrime ? hash - kPrime : hash;
        key.remove_prefix(count);
    }
    // The remainders of keys in a row are evenly spaced; this scatters them.
    return static_cast<std::uint32_t>((hash ^ hash >> 32U) * 0x9e3779b97f4a7c15U >> 32U);
}

/// The number that a key is, written without leading zeros and small enough for a table.
std::optional<std::size_t> NumberOf(std::string_view key) {
    constexpr std::size_t kMostDigits = 6;
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    if (key.empty() || key.size() > kMostDigits || (key.front() == '0' && key.size() > 1) ||
        !std::ranges::all_of(key, isDigit)) {
        return std::nullopt;
    }
    std::size_t number = 0;
    for (const char c : key) {
        number = 10 * number + static_cast<std::size_t>(c - '0');
    }
    return number;
}

}  // namespace

KeyTable::Entry* KeyTable::Find(std::string_view key) {
    const std::optional<std::size_t> number = NumberOf(key);
    if (number && *number >= m_numbers.size()) {
        return nullptr;
    }
    const Place place = number ? m_numbers[*number] : PlaceOfName(key);
    return place != 0 ? &m_entries[place - 1] : nullptr;
}

KeyTable::Entry* KeyTable::Add(const Entry& entry) {
    const std::optional<std::size_t> number = NumberOf(entry.key);
    if (number) {
        m_numbers.resize(std::max(m_numbers.size(), *number + 1));
    } else if (2 * m_nNames >= m_slots.size()) {
        Grow();
    }
    Place& place = number ? m_numbers[*number] : PlaceOfName(entry.key);
    if (place == 0) {
        m_entries.push_back(entry);
        place = static_cast<Place>(m_entries.size());
        m_nNames += number ? 0 : 1;
    }
    return &m_entries[place - 1];
}

KeyTable::Place& KeyTable::PlaceOfName(std::string_view key) {
    const std::uint32_t hash = HashOf(key);
    for (std::size_t i = hash;; ++i, ++m_nSteps) {
        Slot& slot = m_slots[i & (m_slots.size() - 1)];
        if (slot.nPlace == 0) {
            slot.nHash = hash;
            return slot.nPlace;
        }
        if (slot.nHash == hash && m_entries[slot.nPlace - 1].key == key) {
            return slot.nPlace;
        }
    }
}

void KeyTable::Grow() {
    std::vector<Slot> slots(4 * m_slots.size());
    for (const Slot& slot : m_slots) {
        if (slot.nPlace != 0) {
            std::size_t i = slot.nHash;
            while (slots[i & (slots.size() - 1)].nPlace != 0) {
                ++i;
            }
            slots[i & (slots.size() - 1)] = slot;
        }
    }
    m_slots = std::move(slots);
}

}  // namespace veldan
