#pragma once

#include "profile/ProfileElements.h"
#include "profile/ProfileNodes.h"

#include <array>
#include <optional>
#include <span>

namespace veldan {

// The 24 elements of all parameters are written as one block, always all of them and in one order, whichever of them
// the file holds already.

/// What the two elements of a parameter hold.
struct ParameterValues {
    ProfileChoice current;
    ProfileChoice list;
};

/// Reads the values of all parameters as they stand in the file, so that a disabled stream's can be given back.
using KeptParameters = std::array<ParameterValues, kProfileParameters>;
[[nodiscard]] KeptParameters ReadParameters(const XmlNode& root);

/// Of each stream, in the order of the table.
using StreamFlags = std::array<bool, kProfileStreams.size()>;

/// Writes the block. A parameter without values keeps what the file holds; elements that are missing there are made
/// without an entry.
using ParameterBlock = std::array<std::optional<ParameterValues>, kProfileParameters>;
void WriteBlock(const XmlNode& root, const ParameterBlock& block, const StreamFlags& disabled);

/// Writes the block of a profile with lists. The combos of a disabled stream are empty and don't count: its parameters
/// come from what was kept when they were read, or stay as they are in this document where nothing is given.
template <ProfileCombo Combo>
void WriteComboBlock(const XmlNode& root, std::span<const Combo* const, kProfileParameters> combos,
                     const StreamFlags& disabled, const KeptParameters* pKept) {
    ParameterBlock block;
    for (std::size_t i = 0; i < block.size(); ++i) {
        if (!disabled[StreamOfParameter(i)]) {
            block[i] = ParameterValues{CurrentOf(*combos[i]), ListOf(*combos[i])};
        } else if (pKept) {
            block[i] = (*pKept)[i];
        }
    }
    WriteBlock(root, block, disabled);
}

/// Writes the block of a profile of the user's own making, whose parameters are plain texts. None of it is disabled.
void WriteTextBlock(const XmlNode& root, std::span<const CString, kProfileParameters> texts);

}  // namespace veldan
