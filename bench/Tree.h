#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

/// The contents of a tree of profiles according to its indexes.
struct Tree {
    std::vector<std::size_t> rows;  ///< Profiles per group, in the order of the groups.
    std::size_t profiles = 0;
    std::string fourthOfFirst;  ///< Path of the fourth profile of the first group that has four, as a host gets it.
};

/// Empty if the folder contains no tree.
[[nodiscard]] std::optional<Tree> ReadTree(const std::string& base);
