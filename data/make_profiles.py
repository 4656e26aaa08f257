#!/usr/bin/env python3
"""Writes the profile files and the indexes below `Profiles` from the table in catalogue.py."""

import argparse
import sys
from pathlib import Path

from catalogue import GROUPS

PROFILES = Path(__file__).resolve().parent / "Profiles"
EOL = "\r\n"

# The codecs that a container supports, by the file extension of the output. The editor offers them beside the codec of
# the profile.
VIDEO_CODECS = {
    "mp4": ("H.264", "H.265", "AV1", "MPEG-4"),
    "mkv": ("H.264", "H.265", "AV1", "VP9", "MPEG-4", "FFV1"),
    "mov": ("H.264", "H.265", "MPEG-4", "MJPEG"),
    "avi": ("MPEG-4", "MJPEG"),
    "wmv": ("WMV 9", "WMV 8"),
    "webm": ("VP9", "AV1", "VP8"),
    "ogv": ("Theora",),
    "flv": ("H.264", "Sorenson H.263"),
    "3gp": ("H.264", "MPEG-4", "H.263"),
    "gif": ("GIF",),
    "vob": ("MPEG-2",),
    "mpg": ("MPEG-1", "MPEG-2"),
    "m2ts": (),
    "mts": (),
    "ts": ("H.264", "H.265", "MPEG-2"),
    "mxf": ("DNxHD", "MPEG-2"),
    "dv": ("DV",),
}
AUDIO_CODECS = {
    "mp4": ("AAC", "HE-AAC", "MP3", "AC-3"),
    "mkv": ("AAC", "AC-3", "Opus", "Vorbis", "MP3", "FLAC"),
    "mov": ("AAC", "ALAC", "PCM"),
    "avi": ("MP3", "AC-3", "PCM"),
    "wmv": ("WMA 9", "WMA 8"),
    "webm": ("Opus", "Vorbis"),
    "ogv": ("Vorbis",),
    "flv": ("AAC", "MP3"),
    "3gp": ("AAC", "AMR-NB"),
    "gif": (),
    "vob": ("AC-3", "MP2", "PCM"),
    "mpg": ("MP2",),
    "m2ts": ("AC-3", "DTS", "PCM"),
    "mts": ("AC-3", "PCM"),
    "ts": ("AAC", "AC-3", "MP2"),
    "mxf": ("PCM",),
    "dv": ("PCM",),
    "m4a": ("AAC", "HE-AAC", "HE-AAC v2", "ALAC"),
    "ogg": ("Vorbis", "Opus"),
}

VIDEO_BITRATES = (64, 128, 192, 256, 300, 350, 384, 500, 512, 600, 700, 750, 768, 900, 1000, 1200, 1500, 1800, 2000,
                  2500, 3000, 3500, 4000, 5000, 6000, 8000, 10000, 12000, 15000, 20000, 25000, 30000, 40000, 50000,
                  60000, 80000)
# Codecs and formats whose bit rate is part of their definition.
FIXED_BITRATE = ("ProRes", "DNxHD", "DV", "MPEG-1", "FFV1", "GIF")
# The highest bit rate that a format's standard allows, where that is less than the list above.
BITRATE_LIMITS = {"vob": 9000, "mpg": 2500, "3gp": 500, "m2ts": 40000, "mts": 18000}
CODEC_BITRATE_LIMITS = {("ts", "MPEG-2"): 19000, ("mxf", "MPEG-2"): 50000, ("m2ts", "H.265"): 80000}

SIZES = ("7680x4320", "3840x2160", "2560x1440", "1920x1080", "1280x720", "854x480", "640x360")
SIZES_4_3 = ("2048x1536", "1024x768", "800x600", "640x480", "320x240", "176x144")
SIZES_PORTRAIT = ("1080x1920", "720x1280", "540x960")
# Formats that prescribe their picture: a size decides which frame rates go with it.
FIXED_SIZES = {
    ("vob", "25"): ("720x576", "704x576", "352x576"),
    ("vob", "29.97"): ("720x480", "704x480", "352x480"),
    ("vob", "23.976"): ("720x480",),
    ("m2ts", "23.976"): ("1920x1080",),
    ("m2ts", "25"): ("1920x1080", "1440x1080"),
    ("m2ts", "29.97"): ("1920x1080", "1440x1080"),
    ("m2ts", "50"): ("1280x720",),
    ("mts", "25"): ("1920x1080", "1440x1080"),
    ("ts", "25"): ("1920x1080", "1440x1080", "720x576", "544x576"),
    ("ts", "50"): ("1920x1080", "1280x720"),
    ("ts", "29.97"): ("1920x1080", "704x480"),
    ("ts", "59.94"): ("1280x720", "704x480"),
}
RATES = ("Auto", "15", "23.976", "24", "25", "29.97", "30", "50", "59.94", "60")
FIXED_RATE = ("vob", "mpg", "dv", "m2ts", "mts", "ts", "mxf")

AUDIO_BITRATES = {
    "AAC": (32, 48, 64, 96, 128, 160, 192, 256, 320, 384),
    "HE-AAC": (32, 48, 64, 80, 96),
    "HE-AAC v2": (24, 32, 40, 48),
    "MP3": (32, 64, 96, 128, 160, 192, 224, 256, 320),
    "MP2": (128, 160, 192, 224, 256, 320, 384),
    "AC-3": (192, 224, 256, 320, 384, 448, 640),
    "WMA 9": (48, 64, 96, 128, 160, 192),
    "WMA 8": (48, 64, 96, 128, 160, 192),
    "Opus": (16, 24, 32, 48, 64, 96, 128, 160, 192, 256),
    "Vorbis": (64, 80, 96, 112, 128, 160, 192, 224, 256, 320),
    "AMR-NB": ("4.75", "5.15", "5.9", "6.7", "7.4", "7.95", "10.2", "12.2"),
    "AMR-WB": ("6.6", "8.85", "12.65", "14.25", "15.85", "18.25", "19.85", "23.05", "23.85"),
    "Speex": ("9.8", "12.8", "16.8", "20.6", "23.8", "27.8", "34.2", "42.2"),
}
SAMPLE_RATES = {
    "AAC": (22050, 32000, 44100, 48000),
    "HE-AAC": (32000, 44100, 48000),
    "HE-AAC v2": (32000, 44100, 48000),
    "MP3": (22050, 24000, 32000, 44100, 48000),
    "MP2": (32000, 44100, 48000),
    "WMA 9": (32000, 44100, 48000),
    "WMA 8": (32000, 44100, 48000),
    "Vorbis": (22050, 32000, 44100, 48000),
    "FLAC": (44100, 48000, 88200, 96000, 192000),
    "ALAC": (44100, 48000, 88200, 96000),
    "WavPack": (44100, 48000, 88200, 96000),
}
AUDIO_BITRATE_LIMITS = {"vob": 448}
SURROUND = ("AAC", "AC-3", "Opus", "Vorbis", "FLAC", "ALAC", "WavPack", "DTS")
VOLUMES = ("50%", "75%", "100%", "125%", "150%", "200%")


def with_current(choices, current, key=None):
    """The choices with the current entry among them, in its place where a sort key is given and last otherwise."""
    if current in choices:
        return list(choices)
    return sorted([*choices, current], key=key) if key else [*choices, current]


def video_bitrates(video, ext):
    """The profile's own bit rate and up to three customary ones on either side."""
    if video.codec.startswith(FIXED_BITRATE):
        return [video.bitrate]
    rates = with_current(VIDEO_BITRATES, video.bitrate, key=int)
    limit = CODEC_BITRATE_LIMITS.get((ext, video.codec), BITRATE_LIMITS.get(ext, VIDEO_BITRATES[-1]))
    rates = [rate for rate in rates if rate <= limit]
    at = rates.index(video.bitrate)
    return rates[max(0, at - 3):at + 4]


def pixels(size):
    width, height = size.split("x")
    return int(width), int(height)


def sizes(video, ext):
    if ext in ("mpg", "dv", "mxf") or video.codec.startswith("ProRes"):
        return [video.size]
    if (ext, video.rate) in FIXED_SIZES:
        return with_current(FIXED_SIZES[ext, video.rate], video.size, key=lambda size: -pixels(size)[0])
    if video.size == "Original":
        return ["Original", *SIZES]
    width, height = pixels(video.size)
    family = SIZES_PORTRAIT if width < height else SIZES_4_3 if width * 3 <= height * 4 else SIZES
    # A profile for a screen offers what that screen can show, so no size larger than its own.
    smaller = [size for size in family if pixels(size)[0] <= width]
    return ["Original", *with_current(smaller, video.size, key=lambda size: -pixels(size)[0])]


def frame_rates(video, ext):
    if ext in FIXED_RATE or video.codec.startswith("ProRes"):
        return [video.rate]
    return with_current(RATES, video.rate, key=lambda rate: 0 if rate == "Auto" else float(rate))


def aspects(video, ext):
    if ext in ("vob", "mpg", "dv", "ts"):
        return ["4:3", "16:9"]
    if ext in ("m2ts", "mts"):
        return ["16:9"]
    return with_current(("Auto", "4:3", "16:9"), video.aspect)


def video_choices(video, ext):
    codecs = with_current(VIDEO_CODECS[ext], video.codec)
    if video.codec.startswith("ProRes") or ext in ("mpg", "mxf"):
        codecs = [video.codec]
    return [(codecs, video.codec), (video_bitrates(video, ext), video.bitrate), (sizes(video, ext), video.size),
            (frame_rates(video, ext), video.rate), (aspects(video, ext), video.aspect)]


def audio_choices(audio, ext):
    codecs = with_current(AUDIO_CODECS.get(ext, ()), audio.codec)
    limit = AUDIO_BITRATE_LIMITS.get(ext)
    bitrates = with_current(AUDIO_BITRATES.get(audio.codec, ()), audio.bitrate)
    bitrates = [rate for rate in bitrates if limit is None or rate <= limit]
    rates = with_current(SAMPLE_RATES.get(audio.codec, ()), audio.sample_rate, key=int)
    channels = ["Mono", "Stereo", "5.1"] if audio.codec in SURROUND else ["Mono", "Stereo"]
    if audio.codec in ("AMR-NB", "AMR-WB", "Speex", "G.711 mu-law"):
        channels = ["Mono"]
    if audio.codec == "HE-AAC v2" or (audio.codec == "PCM" and ext in ("dv", "mxf")):
        channels = ["Stereo"]
    if audio.codec == "PCM" or ext == "mpg":
        # The bit rate follows from the sample rate and the channels, or from the disc's standard, so all are fixed.
        bitrates, rates, channels = [audio.bitrate], [audio.sample_rate], [audio.channels]
    return [(codecs, audio.codec), (bitrates, audio.bitrate), (rates, audio.sample_rate),
            (channels, audio.channels), (VOLUMES, "100%")]


VIDEO_NAMES = ("VideoCodec", "VideoBitrate", "VideoSize", "VideoFrameRate", "VideoAspectRatio")
AUDIO_NAMES = ("AudioCodec", "AudioBitrate", "AudioSampleRate", "AudioChannels", "AudioVolume")
NOTHING = [((), "")] * 5


def parameter_elements(profile):
    """The ten parameters and the two disable pairs as (element, value, index), in the order in which they are saved."""
    video = video_choices(profile.video, profile.ext) if profile.video else NOTHING
    audio = audio_choices(profile.audio, profile.ext) if profile.audio else NOTHING

    def position(choices, current):
        return list(choices).index(current) if choices else -1

    def current_elements(names, parameters):
        return [(name, current, position(choices, current)) for name, (choices, current) in zip(names, parameters)]

    def list_elements(names, parameters, stream, disabled):
        flag = "YES" if disabled else "NO"
        yield f"{stream}DisableList", flag, 0
        yield f"{stream}Disable", flag, 0
        for name, (choices, current) in zip(names, parameters):
            yield f"{name}List", ",".join(str(choice) for choice in choices), position(choices, current)

    return [*current_elements(VIDEO_NAMES, video), *current_elements(AUDIO_NAMES, audio),
            *list_elements(VIDEO_NAMES, video, "Video", not profile.video),
            *list_elements(AUDIO_NAMES, audio, "Audio", not profile.audio)]


def profile_text(group_number, group, number, profile):
    identity = (("GroupID", group_number), ("GroupName", group.name), ("ProfileID", group_number * 100 + number),
                ("ProfileName", profile.name), ("ProfileComment", profile.comment), ("FormatExt", profile.ext),
                ("IsSysProfile", "YES"))
    lines = ['<?xml version="1.0" ?>', "<Profile>"]
    lines += [f'    <{name} value="{value}"/>' for name, value in identity]
    lines.append("")
    lines += [f'    <{name} value="{value}" index="{index}"/>' for name, value, index in parameter_elements(profile)]
    lines.append("</Profile>")
    return EOL.join(lines) + EOL


def index_text(entries):
    lines = ["[Order]", f"Num={len(entries)}"]
    for number, (value, icon) in enumerate(entries):
        lines.append(f"{number}={value}")
        if icon:
            lines.append(f"{value}={icon}")
    return "\ufeff" + EOL.join(lines) + EOL


def catalogue_files():
    """Every generated text of the catalogue, by its path below `Profiles`."""
    files = {"order.ini": index_text([(group.name + "*" * group.marked, None) for group in GROUPS])}
    for group_number, group in enumerate(GROUPS):
        entries = [(f"{profile.file}.xml", f"{profile.file}.png") for profile in group.profiles]
        files[f"{group.name}/order.ini"] = index_text(entries)
        for number, profile in enumerate(group.profiles, 1):
            files[f"{group.name}/{profile.file}.xml"] = profile_text(group_number, group, number, profile)
    return files


def main():
    argparse.ArgumentParser(description=__doc__).parse_args()
    files = catalogue_files()
    for path in PROFILES.glob("*/*.xml"):
        if path.relative_to(PROFILES).as_posix() not in files:
            path.unlink()
    for name, text in files.items():
        path = PROFILES / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text.encode("utf-8"))
    return 0


if __name__ == "__main__":
    sys.exit(main())
