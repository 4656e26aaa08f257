#pragma once

#include <filesystem>
#include <string>

/// The folder with the user's own copy of the sample catalogue, which the first call makes. Empty, with a message on
/// the standard error output, if the copy can't be made.
std::string SampleBase();

/// A copy of a catalogue that the menu may change, in a temporary folder that the destructor removes.
class TemporaryCatalogue {
public:
    /// Copies what the menu reads of the catalogue in `base`, or of the samples if that is empty.
    explicit TemporaryCatalogue(const std::string& base);
    ~TemporaryCatalogue();
    TemporaryCatalogue(const TemporaryCatalogue&) = delete;
    TemporaryCatalogue& operator=(const TemporaryCatalogue&) = delete;

    /// Empty, with a message on the standard error output, if the copy couldn't be made.
    [[nodiscard]] std::string Base() const { return m_folder.string(); }

private:
    std::filesystem::path m_folder;
};
