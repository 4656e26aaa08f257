#pragma once

#include <array>
#include <cstddef>

namespace veldan {

/// A parameter of the conversion, with the names of the two elements that hold it: the value in use, and the list of
/// those to choose from.
struct ProfileParameter {
    const char* pszCurrent;
    const char* pszList;
    /// What a person reads; unique within its stream.
    const char* pszLabel;
};

/// One of the two streams of a conversion. A pair of elements tells whether it is disabled as a whole.
struct ProfileStream {
    const char* pszLabel;
    const char* pszDisable;
    const char* pszDisableList;
    std::array<ProfileParameter, 5> parameters;
};

/// The one table of the 24 elements that hold parameters, in the order of the file.
inline constexpr std::array<ProfileStream, 2> kProfileStreams = {{
    {"Video",
     "VideoDisable",
     "VideoDisableList",
     {{
         {"VideoCodec", "VideoCodecList", "Codec"},
         {"VideoBitrate", "VideoBitrateList", "Bitrate(kbps)"},
         {"VideoSize", "VideoSizeList", "Size(pixel)"},
         {"VideoFrameRate", "VideoFrameRateList", "Frame Rate(fps)"},
         {"VideoAspectRatio", "VideoAspectRatioList", "Aspect Ratio"},
     }}},
    {"Audio",
     "AudioDisable",
     "AudioDisableList",
     {{
         {"AudioCodec", "AudioCodecList", "Codec"},
         {"AudioBitrate", "AudioBitrateList", "Bitrate(kbps)"},
         {"AudioSampleRate", "AudioSampleRateList", "Sample Rate(Hz)"},
         {"AudioChannels", "AudioChannelsList", "Channels"},
         {"AudioVolume", "AudioVolumeList", "Volume"},
     }}},
}};

/// Parameters are counted through both streams.
inline constexpr std::size_t kProfileParameters = 10;

[[nodiscard]] constexpr std::size_t StreamOfParameter(std::size_t parameter) {
    return parameter / kProfileStreams[0].parameters.size();
}
[[nodiscard]] constexpr const ProfileParameter& ParameterAt(std::size_t parameter) {
    return kProfileStreams[StreamOfParameter(parameter)].parameters[parameter % kProfileStreams[0].parameters.size()];
}

}  // namespace veldan
