#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// What a tree of profiles holds, as its indexes tell.
struct Tree {
    std::vector<std::size_t> rows;  ///< Profiles per group, in the order of the groups.
    std::size_t profiles = 0;
    std::string fourthOfFirst;  ///< Path of the fourth profile of the first group that has so many, as a host gets it.
};

/// Nothing if the folder holds no tree.
[[nodiscard]] std::optional<Tree> ReadTree(const std::string& base);
