#pragma once

#include <filesystem>
#include <string>

/// The folder with the person's own copy of the sample catalogue; the first call makes the copy. Empty, with a message
/// on the standard error output, if there is none and none can be made.
std::string SampleBase();

/// A copy of a catalogue in a temporary folder, which goes with the object. The menu may write there.
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
