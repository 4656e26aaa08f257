"""The sample catalogue: its groups and what every profile stands for.

This is the one place to edit. `make_profiles.py` turns it into the profile files and indexes, `make_icons.py` into the
pictures. File names are unique across all groups, since picked profiles and their icons meet in the folder `Recent`.
"""

from dataclasses import dataclass


@dataclass(frozen=True)
class Video:
    """The picture of a profile. Bit rates are in kbit/s; `Auto` and `Original` follow the source."""

    codec: str
    bitrate: object
    size: str
    rate: str = "Auto"
    aspect: str = "Auto"


@dataclass(frozen=True)
class Audio:
    """The sound of a profile, with the bit rate in kbit/s and the sample rate in Hz."""

    codec: str
    bitrate: object
    sample_rate: int
    channels: str = "Stereo"


@dataclass(frozen=True)
class Profile:
    """One profile; `label` is the word on its icon, `ext` the file ending that a converter gives its output."""

    file: str
    label: str
    ext: str
    name: str
    comment: str
    video: Video | None
    audio: Audio | None


@dataclass(frozen=True)
class Group:
    """One group: its name, the glyph and accent colour of its icons, whether it is marked as new."""

    name: str
    glyph: str
    accent: str
    marked: bool = False
    profiles: tuple = ()


def _aac(bitrate=160, sample_rate=48000, channels="Stereo"):
    return Audio("AAC", bitrate, sample_rate, channels)


def _surround(bitrate=448):
    return Audio("AC-3", bitrate, 48000, "5.1")


def _pcm(bitrate=1536, sample_rate=48000, channels="Stereo"):
    return Audio("PCM", bitrate, sample_rate, channels)


P, V, A = Profile, Video, Audio

_MP4 = (
    P("mp4-h264-source", "MP4", "mp4", "MP4 H.264 source size", "Keeps the picture size of the source",
      V("H.264", 4000, "Original"), _aac()),
    P("mp4-h264-1080p", "1080p", "mp4", "MP4 H.264 1080p", "Full HD that plays nearly everywhere",
      V("H.264", 5000, "1920x1080"), _aac()),
    P("mp4-h264-720p", "720p", "mp4", "MP4 H.264 720p", "Good picture at a moderate size",
      V("H.264", 2500, "1280x720"), _aac()),
    P("mp4-h264-480p", "480p", "mp4", "MP4 H.264 480p", "DVD quality in a small file",
      V("H.264", 1200, "854x480"), _aac(128)),
    P("mp4-h264-360p", "360p", "mp4", "MP4 H.264 360p", "For slow connections and small screens",
      V("H.264", 700, "640x360"), _aac(96, 44100)),
    P("mp4-h265-1080p", "1080p", "mp4", "MP4 H.265 1080p", "Full HD at about half the size of H.264",
      V("H.265", 2500, "1920x1080"), _aac()),
    P("mp4-h265-720p", "720p", "mp4", "MP4 H.265 720p", "Small HD files for recent players",
      V("H.265", 1200, "1280x720"), _aac(128)),
    P("mp4-h265-480p", "480p", "mp4", "MP4 H.265 480p", "Very small files, still clear on a phone",
      V("H.265", 600, "854x480"), _aac(96)),
    P("mp4-av1-1080p", "1080p", "mp4", "MP4 AV1 1080p", "Smallest Full HD, encodes slowly",
      V("AV1", 2000, "1920x1080"), _aac(128)),
    P("mp4-av1-720p", "720p", "mp4", "MP4 AV1 720p", "Smallest HD, for the newest players",
      V("AV1", 1000, "1280x720"), _aac(128)),
    P("mp4-mpeg4-480p", "480p", "mp4", "MP4 MPEG-4 480p", "For players from before H.264",
      V("MPEG-4", 1500, "640x480", "Auto", "4:3"), _aac(128, 44100)),
    P("mp4-mpeg4-240p", "240p", "mp4", "MP4 MPEG-4 240p", "For the first handheld players",
      V("MPEG-4", 500, "320x240", "Auto", "4:3"), _aac(96, 44100)),
    P("mp4-email", "MAIL", "mp4", "MP4 for e-mail", "Under 3 MB for each minute",
      V("H.264", 300, "426x240", "25"), _aac(64, 44100, "Mono")),
)

_HD = (
    P("hd-mp4-1080p", "MP4", "mp4", "HD MP4 H.264 1080p", "High quality for nearly every player",
      V("H.264", 8000, "1920x1080"), _aac(192)),
    P("hd-mp4-1080p60", "60fps", "mp4", "HD MP4 H.264 1080p 60 fps", "Smooth motion for sport and games",
      V("H.264", 12000, "1920x1080", "60"), _aac(192)),
    P("hd-mp4-720p", "MP4", "mp4", "HD MP4 H.264 720p", "High quality at the smaller HD size",
      V("H.264", 4000, "1280x720"), _aac(192)),
    P("hd-mp4-h265-1080p", "MP4", "mp4", "HD MP4 H.265 1080p", "High quality, a third smaller",
      V("H.265", 5000, "1920x1080"), _aac(192)),
    P("hd-mkv-1080p", "MKV", "mkv", "HD MKV H.264 1080p", "With surround sound for home cinema",
      V("H.264", 8000, "1920x1080"), _surround()),
    P("hd-mkv-720p", "MKV", "mkv", "HD MKV H.264 720p", "With surround sound, smaller picture",
      V("H.264", 4000, "1280x720"), _surround(384)),
    P("hd-mov-1080p", "MOV", "mov", "HD MOV H.264 1080p", "Made to be edited once more",
      V("H.264", 10000, "1920x1080"), _aac(256)),
    P("hd-mov-720p", "MOV", "mov", "HD MOV H.264 720p", "Made to be edited, half the pixels",
      V("H.264", 5000, "1280x720"), _aac(256)),
    P("hd-webm-1080p", "WEBM", "webm", "HD WebM VP9 1080p", "Free formats, plays in every browser",
      V("VP9", 4000, "1920x1080"), A("Opus", 160, 48000)),
    P("hd-wmv-1080p", "WMV", "wmv", "HD WMV 1080p", "For slide shows and older desktops",
      V("WMV 9", 8000, "1920x1080"), A("WMA 9", 192, 48000)),
    P("hd-wmv-720p", "WMV", "wmv", "HD WMV 720p", "For older desktops, smaller picture",
      V("WMV 9", 5000, "1280x720"), A("WMA 9", 192, 48000)),
    P("hd-avi-720p", "AVI", "avi", "HD AVI MPEG-4 720p", "For players that know only AVI",
      V("MPEG-4", 5000, "1280x720"), A("MP3", 192, 48000)),
)

_UHD = (
    P("4k-mp4-h265", "4K", "mp4", "4K MP4 H.265", "Ultra HD for recent screens and players",
      V("H.265", 20000, "3840x2160"), _aac(192)),
    P("4k-mp4-h265-60", "60fps", "mp4", "4K MP4 H.265 60 fps", "Ultra HD with very smooth motion",
      V("H.265", 30000, "3840x2160", "60"), _aac(192)),
    P("4k-mp4-h264", "4K", "mp4", "4K MP4 H.264", "Larger files that more players accept",
      V("H.264", 40000, "3840x2160"), _aac(192)),
    P("4k-mp4-av1", "4K", "mp4", "4K MP4 AV1", "Smallest Ultra HD, encodes slowly",
      V("AV1", 12000, "3840x2160"), _aac(192)),
    P("4k-mkv-h265", "MKV", "mkv", "4K MKV H.265", "With surround sound for home cinema",
      V("H.265", 20000, "3840x2160"), _surround(640)),
    P("4k-webm-vp9", "WEBM", "webm", "4K WebM VP9", "Ultra HD for the browser",
      V("VP9", 18000, "3840x2160"), A("Opus", 192, 48000)),
    P("4k-mov-h265", "MOV", "mov", "4K MOV H.265", "For editing on a current desktop",
      V("H.265", 25000, "3840x2160"), _aac(256)),
    P("4k-dci-prores", "DCI", "mov", "4K cinema MOV ProRes 422", "The wide cinema frame at 24 fps",
      V("ProRes 422", 503000, "4096x2160", "24"), _pcm()),
    P("8k-mp4-h265", "8K", "mp4", "8K MP4 H.265", "Four times the pixels of 4K",
      V("H.265", 80000, "7680x4320", "30"), _aac(256)),
)

_WEB = (
    P("web-upload-1080p", "1080p", "mp4", "Upload MP4 1080p", "For video sites, before they convert it",
      V("H.264", 8000, "1920x1080"), _aac(256)),
    P("web-upload-720p", "720p", "mp4", "Upload MP4 720p", "Uploads in two thirds of the time",
      V("H.264", 5000, "1280x720"), _aac(192)),
    P("web-vertical", "9:16", "mp4", "Vertical MP4 1080x1920", "Short clips held upright",
      V("H.264", 6000, "1080x1920", "30", "9:16"), _aac(192)),
    P("web-square", "1:1", "mp4", "Square MP4 1080x1080", "For feeds with square tiles",
      V("H.264", 4000, "1080x1080", "30", "1:1"), _aac()),
    P("web-vp9-1080p", "1080p", "webm", "WebM VP9 1080p", "To stream from your own site",
      V("VP9", 2500, "1920x1080"), A("Opus", 128, 48000)),
    P("web-vp9-720p", "720p", "webm", "WebM VP9 720p", "Streams well on home connections",
      V("VP9", 1200, "1280x720"), A("Opus", 96, 48000)),
    P("web-vp9-480p", "480p", "webm", "WebM VP9 480p", "Streams well on mobile networks",
      V("VP9", 750, "854x480"), A("Opus", 64, 48000)),
    P("web-av1-1080p", "1080p", "webm", "WebM AV1 1080p", "The least data for current browsers",
      V("AV1", 1800, "1920x1080"), A("Opus", 128, 48000)),
    P("web-vp8-480p", "480p", "webm", "WebM VP8 480p", "For browsers from before VP9",
      V("VP8", 1200, "854x480"), A("Vorbis", 128, 44100)),
    P("web-theora-480p", "OGV", "ogv", "Ogg Theora 480p", "For wikis and free players",
      V("Theora", 1500, "854x480"), A("Vorbis", 128, 44100)),
    P("web-flv-480p", "FLV", "flv", "FLV H.264 480p", "For streaming servers that expect FLV",
      V("H.264", 1000, "854x480"), _aac(96, 44100)),
    P("web-loop-720p", "LOOP", "webm", "Silent WebM loop 720p", "Page background without sound",
      V("VP9", 1000, "1280x720", "30"), None),
    P("web-gif", "GIF", "gif", "Animated GIF", "A few seconds, shown anywhere, no sound",
      V("GIF", "Auto", "480x270", "10"), None),
)

_MKV = (
    P("mkv-h264-1080p", "1080p", "mkv", "MKV H.264 1080p", "Full HD, room for many tracks",
      V("H.264", 5000, "1920x1080"), _aac()),
    P("mkv-h264-720p", "720p", "mkv", "MKV H.264 720p", "HD at a moderate size",
      V("H.264", 2500, "1280x720"), _aac()),
    P("mkv-h264-480p", "480p", "mkv", "MKV H.264 480p", "For collections of older films",
      V("H.264", 1200, "854x480"), _aac(128)),
    P("mkv-h264-surround", "5.1", "mkv", "MKV H.264 surround", "Full HD with six channels of sound",
      V("H.264", 6000, "1920x1080"), _surround()),
    P("mkv-h265-1080p", "1080p", "mkv", "MKV H.265 1080p", "Full HD at about half the size of H.264",
      V("H.265", 2500, "1920x1080"), _aac()),
    P("mkv-h265-720p", "720p", "mkv", "MKV H.265 720p", "Small files for a series of episodes",
      V("H.265", 1200, "1280x720"), _aac(128)),
    P("mkv-av1-1080p", "1080p", "mkv", "MKV AV1 and Opus 1080p", "Free formats and the smallest files",
      V("AV1", 2000, "1920x1080"), A("Opus", 128, 48000)),
    P("mkv-vp9-1080p", "1080p", "mkv", "MKV VP9 and Opus 1080p", "Free formats, faster to encode than AV1",
      V("VP9", 2500, "1920x1080"), A("Opus", 128, 48000)),
    P("mkv-ffv1", "FFV1", "mkv", "MKV FFV1 and FLAC", "Lossless picture and sound for archives",
      V("FFV1", "Lossless", "Original"), A("FLAC", "Lossless", 48000)),
)

_MOV = (
    P("mov-h264-1080p", "1080p", "mov", "MOV H.264 1080p", "Full HD for desktop players",
      V("H.264", 6000, "1920x1080"), _aac(192)),
    P("mov-h264-720p", "720p", "mov", "MOV H.264 720p", "HD for desktop players",
      V("H.264", 3000, "1280x720"), _aac()),
    P("mov-h264-480p", "480p", "mov", "MOV H.264 480p", "For presentations and small windows",
      V("H.264", 1500, "854x480"), _aac(128)),
    P("mov-h265-1080p", "1080p", "mov", "MOV H.265 1080p", "Full HD at about half the size of H.264",
      V("H.265", 3000, "1920x1080"), _aac(192)),
    P("mov-h264-pcm", "PCM", "mov", "MOV H.264 with PCM sound", "Sound without loss, for more editing",
      V("H.264", 10000, "1920x1080"), _pcm()),
    P("mov-mpeg4-480p", "480p", "mov", "MOV MPEG-4 480p", "For players from before H.264",
      V("MPEG-4", 1500, "640x480", "Auto", "4:3"), _aac(128, 44100)),
    P("mov-mjpeg-720p", "JPEG", "mov", "MOV Motion JPEG 720p", "Every frame whole, easy to cut",
      V("MJPEG", 25000, "1280x720"), _pcm()),
)

_AVI = (
    P("avi-mpeg4-720p", "720p", "avi", "AVI MPEG-4 720p", "HD for older computers",
      V("MPEG-4", 3000, "1280x720"), A("MP3", 192, 48000)),
    P("avi-mpeg4-576p", "576p", "avi", "AVI MPEG-4 576p", "DVD size for disc players with AVI",
      V("MPEG-4", 1800, "720x576", "25"), A("MP3", 160, 48000)),
    P("avi-mpeg4-480p", "480p", "avi", "AVI MPEG-4 480p", "For players of MPEG-4 discs",
      V("MPEG-4", 1500, "640x480", "Auto", "4:3"), A("MP3", 128, 44100)),
    P("avi-mpeg4-cd", "CD", "avi", "AVI MPEG-4 for one CD", "About 90 minutes in 700 MB",
      V("MPEG-4", 900, "640x360"), A("MP3", 128, 44100)),
    P("avi-mpeg4-surround", "5.1", "avi", "AVI MPEG-4 surround", "Keeps six channels of sound",
      V("MPEG-4", 2500, "1280x720"), _surround(384)),
    P("avi-mjpeg-480p", "JPEG", "avi", "AVI Motion JPEG 480p", "Every frame whole, easy to cut",
      V("MJPEG", 10000, "640x480", "30", "4:3"), _pcm()),
    P("wmv9-480p", "480p", "wmv", "WMV 9 480p", "For desktops and slide shows",
      V("WMV 9", 1500, "854x480"), A("WMA 9", 128, 44100)),
    P("wmv9-240p", "240p", "wmv", "WMV 9 240p", "Small files for slow connections",
      V("WMV 9", 350, "320x240", "Auto", "4:3"), A("WMA 9", 64, 44100)),
    P("wmv8-480p", "WMV8", "wmv", "WMV 8 480p", "For computers from around 2001",
      V("WMV 8", 1500, "640x480", "Auto", "4:3"), A("WMA 8", 128, 44100)),
)

_DVD = (
    P("dvd-pal-high", "PAL", "vob", "DVD PAL high quality", "About 70 minutes on a single-layer disc",
      V("MPEG-2", 8000, "720x576", "25", "16:9"), _surround()),
    P("dvd-pal-2h", "PAL", "vob", "DVD PAL two hours", "Two hours on a single-layer disc",
      V("MPEG-2", 5000, "720x576", "25", "16:9"), A("AC-3", 192, 48000)),
    P("dvd-pal-3h", "PAL", "vob", "DVD PAL three hours", "Three hours, softer picture",
      V("MPEG-2", 3200, "720x576", "25", "16:9"), A("AC-3", 192, 48000)),
    P("dvd-pal-43", "4:3", "vob", "DVD PAL 4:3", "For recordings from television and tape",
      V("MPEG-2", 5000, "720x576", "25", "4:3"), A("AC-3", 192, 48000)),
    P("dvd-pal-half", "HALF", "vob", "DVD PAL half width", "For tape copies, over four hours",
      V("MPEG-2", 2000, "352x576", "25", "4:3"), A("AC-3", 192, 48000)),
    P("dvd-ntsc-high", "NTSC", "vob", "DVD NTSC high quality", "About 70 minutes on a single-layer disc",
      V("MPEG-2", 8000, "720x480", "29.97", "16:9"), _surround()),
    P("dvd-ntsc-2h", "NTSC", "vob", "DVD NTSC two hours", "Two hours on a single-layer disc",
      V("MPEG-2", 5000, "720x480", "29.97", "16:9"), A("AC-3", 192, 48000)),
    P("dvd-ntsc-film", "FILM", "vob", "DVD NTSC film", "Cinema films at their own 24 frames",
      V("MPEG-2", 5000, "720x480", "23.976", "16:9"), _surround()),
    P("svcd-pal", "SVCD", "mpg", "Super Video CD PAL", "About 40 minutes on a CD",
      V("MPEG-2", 2500, "480x576", "25", "4:3"), A("MP2", 224, 44100)),
    P("svcd-ntsc", "SVCD", "mpg", "Super Video CD NTSC", "About 40 minutes on a CD",
      V("MPEG-2", 2500, "480x480", "29.97", "4:3"), A("MP2", 224, 44100)),
    P("vcd-pal", "VCD", "mpg", "Video CD PAL", "Up to 80 minutes on a CD",
      V("MPEG-1", 1150, "352x288", "25", "4:3"), A("MP2", 224, 44100)),
    P("vcd-ntsc", "VCD", "mpg", "Video CD NTSC", "Up to 80 minutes on a CD",
      V("MPEG-1", 1150, "352x240", "29.97", "4:3"), A("MP2", 224, 44100)),
)

_BLURAY = (
    P("bluray-1080p24", "1080p", "m2ts", "Blu-ray H.264 1080p film", "Cinema films with surround sound",
      V("H.264", 25000, "1920x1080", "23.976", "16:9"), _surround(640)),
    P("bluray-1080i50", "1080i", "m2ts", "Blu-ray H.264 1080i 50 Hz", "For European television recordings",
      V("H.264", 20000, "1920x1080", "25", "16:9"), _surround()),
    P("bluray-1080i60", "1080i", "m2ts", "Blu-ray H.264 1080i 60 Hz", "For American television recordings",
      V("H.264", 20000, "1920x1080", "29.97", "16:9"), _surround()),
    P("bluray-720p50", "720p", "m2ts", "Blu-ray H.264 720p 50 fps", "Smooth motion for sport",
      V("H.264", 15000, "1280x720", "50", "16:9"), _surround()),
    P("bluray-mpeg2", "MPG2", "m2ts", "Blu-ray MPEG-2 1080p film", "Encodes fast, needs a large disc",
      V("MPEG-2", 30000, "1920x1080", "23.976", "16:9"), _surround(640)),
    P("bluray-uhd", "4K", "m2ts", "Ultra HD Blu-ray H.265", "Cinema films in 4K, 66 GB discs",
      V("H.265", 60000, "3840x2160", "23.976", "16:9"), _surround(640)),
    P("avchd-1080i50", "AVCHD", "mts", "AVCHD disc 1080i PAL", "HD on a plain DVD, over half an hour",
      V("H.264", 16000, "1920x1080", "25", "16:9"), A("AC-3", 256, 48000)),
)

_TV = (
    P("tv-dvb-sd", "SD", "ts", "DVB SD MPEG-2 576i", "Standard television at 50 Hz",
      V("MPEG-2", 4000, "720x576", "25", "16:9"), A("MP2", 192, 48000)),
    P("tv-dvb-1080i", "1080i", "ts", "DVB HD H.264 1080i", "Satellite and cable HD",
      V("H.264", 10000, "1920x1080", "25", "16:9"), A("AC-3", 384, 48000)),
    P("tv-dvb-720p50", "720p", "ts", "DVB HD H.264 720p 50 fps", "HD channels with 50 whole frames",
      V("H.264", 8000, "1280x720", "50", "16:9"), A("AC-3", 384, 48000)),
    P("tv-dvb-t2", "1080p", "ts", "DVB-T2 H.265 1080p 50 fps", "Terrestrial HD",
      V("H.265", 5000, "1920x1080", "50", "16:9"), _aac(128)),
    P("tv-dvb-uhd", "4K", "ts", "DVB UHD H.265 50 fps", "Ultra HD over satellite",
      V("H.265", 22000, "3840x2160", "50", "16:9"), _surround(448)),
    P("tv-atsc-1080i", "1080i", "ts", "ATSC MPEG-2 1080i", "American HD channels at 60 Hz",
      V("MPEG-2", 17000, "1920x1080", "29.97", "16:9"), _surround(384)),
    P("tv-atsc-720p", "720p", "ts", "ATSC MPEG-2 720p", "American HD with 60 whole frames",
      V("MPEG-2", 14000, "1280x720", "59.94", "16:9"), _surround(384)),
    P("tv-iptv-720p", "IPTV", "ts", "IPTV H.264 720p", "For television over the home network",
      V("H.264", 3500, "1280x720", "25", "16:9"), _aac(128)),
)

_EDITING = (
    P("edit-prores-proxy", "PROXY", "mov", "ProRes 422 Proxy 1080p", "Light stand-ins for rough cuts",
      V("ProRes 422 Proxy", 45000, "1920x1080", "29.97"), _pcm()),
    P("edit-prores-lt", "LT", "mov", "ProRes 422 LT 1080p", "For long recordings of events",
      V("ProRes 422 LT", 102000, "1920x1080", "29.97"), _pcm()),
    P("edit-prores-422", "422", "mov", "ProRes 422 1080p", "The usual quality for editing",
      V("ProRes 422", 147000, "1920x1080", "29.97"), _pcm()),
    P("edit-prores-hq", "HQ", "mov", "ProRes 422 HQ 1080p", "For colour grading and masters",
      V("ProRes 422 HQ", 220000, "1920x1080", "29.97"), _pcm()),
    P("edit-prores-4444", "4444", "mov", "ProRes 4444 1080p", "Full colour, can carry transparency",
      V("ProRes 4444", 330000, "1920x1080", "29.97"), _pcm()),
    P("edit-dnxhd-120", "DNX", "mxf", "DNxHD 120 1080p", "8-bit editing at 25 fps",
      V("DNxHD", 120000, "1920x1080", "25"), _pcm()),
    P("edit-mxf-50", "MXF", "mxf", "MXF MPEG-2 50 Mbit/s", "Delivery to broadcasters at 25 fps",
      V("MPEG-2", 50000, "1920x1080", "25", "16:9"), _pcm()),
    P("edit-dv-pal", "DV", "dv", "DV tape PAL", "Back to a tape camcorder, 576 lines",
      V("DV", 25000, "720x576", "25", "4:3"), _pcm()),
    P("edit-dv-ntsc", "DV", "dv", "DV tape NTSC", "Back to a tape camcorder, 480 lines",
      V("DV", 25000, "720x480", "29.97", "4:3"), _pcm()),
)

_PHONE = (
    P("phone-1080p", "1080p", "mp4", "Phone H.264 1080p", "For large and sharp phone screens",
      V("H.264", 4000, "1920x1080", "30"), _aac(128)),
    P("phone-720p", "720p", "mp4", "Phone H.264 720p", "Plays on any phone of the last ten years",
      V("H.264", 2000, "1280x720", "30"), _aac(128)),
    P("phone-480p", "480p", "mp4", "Phone H.264 480p", "More films in the same memory",
      V("H.264", 1000, "854x480", "30"), _aac(128, 44100)),
    P("phone-h265-1080p", "1080p", "mp4", "Phone H.265 1080p", "Sharp picture, half the memory",
      V("H.265", 2000, "1920x1080", "30"), _aac(128)),
    P("phone-h265-720p", "720p", "mp4", "Phone H.265 720p", "A feature film in about 1 GB",
      V("H.265", 1000, "1280x720", "30"), _aac(128)),
    P("phone-h265-saver", "SAVER", "mp4", "Phone data saver", "About 3 MB for each minute",
      V("H.265", 350, "640x360", "25"), A("HE-AAC", 48, 44100)),
    P("phone-vertical", "9:16", "mp4", "Phone vertical 720x1280", "Fills the screen held upright",
      V("H.264", 2500, "720x1280", "30", "9:16"), _aac(128)),
    P("phone-320", "QVGA", "mp4", "Phone MPEG-4 320x240", "For phones with keys and small screens",
      V("MPEG-4", 384, "320x240", "15", "4:3"), _aac(64, 44100)),
    P("phone-3gp-h264", "3GP", "3gp", "3GP H.264 320x240", "For the first phones with H.264",
      V("H.264", 300, "320x240", "15", "4:3"), _aac(48, 22050, "Mono")),
    P("phone-3gp-mpeg4", "3GP", "3gp", "3GP MPEG-4 176x144", "For older phones, with clearer sound",
      V("MPEG-4", 128, "176x144", "15"), _aac(32, 22050, "Mono")),
    P("phone-3gp-h263", "3GP", "3gp", "3GP H.263 176x144", "For the oldest video phones",
      V("H.263", 64, "176x144", "15"), A("AMR-NB", "12.2", 8000, "Mono")),
    P("phone-mms", "MMS", "3gp", "Video message", "About 30 seconds in 300 KB",
      V("H.263", 64, "176x144", "10"), A("AMR-NB", "6.7", 8000, "Mono")),
)

_TABLET = (
    P("tablet-1080p", "1080p", "mp4", "Tablet H.264 1080p", "For ten inches and more",
      V("H.264", 5000, "1920x1080", "30"), _aac()),
    P("tablet-720p", "720p", "mp4", "Tablet H.264 720p", "For any tablet, saves memory",
      V("H.264", 2500, "1280x720", "30"), _aac(128)),
    P("tablet-h265-1440p", "1440p", "mp4", "Tablet H.265 1440p", "For the sharpest screens",
      V("H.265", 6000, "2560x1440", "30"), _aac(192)),
    P("tablet-43-1536", "4:3", "mp4", "Tablet H.264 2048x1536", "Fills a sharp 4:3 screen",
      V("H.264", 6000, "2048x1536", "30", "4:3"), _aac()),
    P("tablet-43-768", "4:3", "mp4", "Tablet H.264 1024x768", "Fills a plain 4:3 screen",
      V("H.264", 2000, "1024x768", "30", "4:3"), _aac(128)),
    P("tablet-h265-travel", "540p", "mp4", "Tablet H.265 for the journey", "Two hours of film in about 800 MB",
      V("H.265", 750, "960x540", "25"), _aac(128)),
)

_PLAYER = (
    P("player-box-1080p", "1080p", "mkv", "TV box H.264 1080p", "For boxes and sticks at the television",
      V("H.264", 8000, "1920x1080"), _surround()),
    P("player-box-4k", "4K", "mkv", "TV box H.265 4K", "For 4K boxes and televisions",
      V("H.265", 20000, "3840x2160"), _surround()),
    P("player-usb-720p", "USB", "mp4", "USB stick 720p", "For televisions with a USB socket",
      V("H.264", 4000, "1280x720", "25"), _aac(192)),
    P("player-console-1080p", "1080p", "mp4", "Game console 1080p", "For consoles at the television",
      V("H.264", 10000, "1920x1080", "30"), _aac(192)),
    P("player-handheld-272p", "272p", "mp4", "Handheld console 480x272", "For handhelds with a wide screen",
      V("H.264", 768, "480x272", "29.97", "16:9"), _aac(128)),
    P("player-pocket-240p", "240p", "mp4", "Pocket player 320x240", "For music players with a small screen",
      V("H.264", 512, "320x240", "30", "4:3"), _aac(128, 44100)),
    P("player-car-480p", "CAR", "avi", "Car display 800x480", "For screens in the dashboard",
      V("MPEG-4", 1500, "800x480", "25"), A("MP3", 192, 44100)),
    P("player-frame-600", "FRAME", "avi", "Photo frame 800x600", "For digital frames that show clips",
      V("MJPEG", 10000, "800x600", "25", "4:3"), _pcm(1411, 44100)),
)

_MP3 = (
    P("mp3-320", "320", "mp3", "MP3 320 kbps", "The best that MP3 can do", None, A("MP3", 320, 44100)),
    P("mp3-256", "256", "mp3", "MP3 256 kbps", "Hard to tell from the original", None, A("MP3", 256, 44100)),
    P("mp3-192", "192", "mp3", "MP3 192 kbps", "Good for music on the move", None, A("MP3", 192, 44100)),
    P("mp3-160", "160", "mp3", "MP3 160 kbps", "A fair balance for large collections", None, A("MP3", 160, 44100)),
    P("mp3-128", "128", "mp3", "MP3 128 kbps", "About 1 MB for each minute", None, A("MP3", 128, 44100)),
    P("mp3-320-48k", "48K", "mp3", "MP3 320 kbps 48 kHz", "For sound tracks of films", None, A("MP3", 320, 48000)),
    P("mp3-car", "CAR", "mp3", "MP3 for the car", "Plays on any car radio", None, A("MP3", 192, 44100)),
    P("mp3-podcast", "96", "mp3", "MP3 podcast", "Clear speech with music between", None, A("MP3", 96, 44100, "Mono")),
    P("mp3-audiobook", "BOOK", "mp3", "MP3 audio book", "An hour in under 30 MB",
      None, A("MP3", 64, 44100, "Mono")),
    P("mp3-dictation", "32", "mp3", "MP3 dictation", "Speech only, an hour in under 15 MB",
      None, A("MP3", 32, 22050, "Mono")),
)

_AAC = (
    P("aac-256", "256", "m4a", "M4A AAC 256 kbps", "Hard to tell from the original", None, _aac(256, 44100)),
    P("aac-192", "192", "m4a", "M4A AAC 192 kbps", "Very good for music", None, _aac(192, 44100)),
    P("aac-128", "128", "m4a", "M4A AAC 128 kbps", "About as good as MP3 at 160", None, _aac(128, 44100)),
    P("aac-surround", "5.1", "m4a", "M4A AAC surround", "Six channels for films and concerts",
      None, _aac(384, 48000, "5.1")),
    P("he-aac-64", "64", "m4a", "M4A HE-AAC 64 kbps", "Good sound for little data",
      None, A("HE-AAC", 64, 44100)),
    P("he-aac-v2-32", "32", "m4a", "M4A HE-AAC v2 32 kbps", "For radio over a slow line",
      None, A("HE-AAC v2", 32, 44100)),
    P("aac-adts-128", "AAC", "aac", "AAC stream 128 kbps", "Plain stream for players without M4A",
      None, _aac(128, 44100)),
    P("aac-book", "M4B", "m4b", "M4B audio book", "Keeps your place between sittings",
      None, _aac(64, 44100, "Mono")),
    P("wma-192", "192", "wma", "WMA 192 kbps", "For older desktop players", None, A("WMA 9", 192, 44100)),
    P("wma-128", "128", "wma", "WMA 128 kbps", "For older portable players", None, A("WMA 9", 128, 44100)),
)

_LOSSLESS = (
    P("flac-cd", "FLAC", "flac", "FLAC CD quality", "No loss, about half the size of WAV",
      None, A("FLAC", "Lossless", 44100)),
    P("flac-48k", "48K", "flac", "FLAC 48 kHz", "No loss for sound tracks of films",
      None, A("FLAC", "Lossless", 48000)),
    P("flac-96k", "96K", "flac", "FLAC studio 96 kHz", "For recordings in studio quality",
      None, A("FLAC", "Lossless", 96000)),
    P("flac-surround", "5.1", "flac", "FLAC surround", "Six channels without loss",
      None, A("FLAC", "Lossless", 48000, "5.1")),
    P("alac-cd", "ALAC", "m4a", "M4A ALAC CD quality", "No loss, in the M4A container",
      None, A("ALAC", "Lossless", 44100)),
    P("wav-cd", "WAV", "wav", "WAV CD quality", "For burning audio discs", None, _pcm(1411, 44100)),
    P("wav-48k", "48K", "wav", "WAV 48 kHz", "For the sound of a film", None, _pcm(1536, 48000)),
    P("wav-mono", "MONO", "wav", "WAV mono", "Speech to be edited further", None, _pcm(706, 44100, "Mono")),
    P("aiff-cd", "AIFF", "aiff", "AIFF CD quality", "For music programs that prefer AIFF",
      None, _pcm(1411, 44100)),
    P("wavpack-cd", "WV", "wv", "WavPack CD quality", "No loss, for archives of discs",
      None, A("WavPack", "Lossless", 44100)),
)

_VOICE = (
    P("opus-160", "160", "opus", "Opus 160 kbps", "Music that sounds like the original",
      None, A("Opus", 160, 48000)),
    P("opus-96", "96", "opus", "Opus 96 kbps", "Good music in small files", None, A("Opus", 96, 48000)),
    P("opus-24", "24", "opus", "Opus voice 24 kbps", "Clear speech, an hour in 11 MB",
      None, A("Opus", 24, 48000, "Mono")),
    P("vorbis-192", "OGG", "ogg", "Ogg Vorbis 192 kbps", "Free format for games and players",
      None, A("Vorbis", 192, 44100)),
    P("vorbis-128", "OGG", "ogg", "Ogg Vorbis 128 kbps", "About 1 MB for each minute",
      None, A("Vorbis", 128, 44100)),
    P("speex-wide", "SPX", "spx", "Speex wide band", "For old Internet telephony",
      None, A("Speex", "27.8", 16000, "Mono")),
    P("amr-nb", "AMR", "amr", "AMR telephone voice", "For voice memos on old phones",
      None, A("AMR-NB", "12.2", 8000, "Mono")),
    P("amr-wb", "AMR", "amr", "AMR wide band voice", "Clearer voice memos", None, A("AMR-WB", "23.85", 16000, "Mono")),
    P("wav-ulaw", "ULAW", "wav", "WAV mu-law telephone", "For announcements and answering machines",
      None, A("G.711 mu-law", 64, 8000, "Mono")),
)

# The order of the groups is that of the menu.
GROUPS = (
    Group("Recent", "clock", "amber"),
    Group("MP4 Video", "film", "amber", True, _MP4),
    Group("HD Video", "screen", "sky", False, _HD),
    Group("4K Video", "frames", "sky", True, _UHD),
    Group("Web Video", "globe", "lime", True, _WEB),
    Group("MKV Video", "layers", "amber", False, _MKV),
    Group("MOV Video", "clapper", "amber", False, _MOV),
    Group("AVI and WMV", "reel", "amber", False, _AVI),
    Group("DVD and VCD", "disc", "violet", False, _DVD),
    Group("Blu-ray", "bluray", "violet", False, _BLURAY),
    Group("TV Broadcast", "tv", "sky", False, _TV),
    Group("Editing", "timeline", "lime", False, _EDITING),
    Group("Smartphone", "phone", "mint", False, _PHONE),
    Group("Tablet", "tablet", "mint", False, _TABLET),
    Group("Media Player", "player", "mint", False, _PLAYER),
    Group("MP3 Audio", "note", "rose", False, _MP3),
    Group("AAC and WMA", "headphones", "rose", False, _AAC),
    Group("Lossless Audio", "wave", "rose", False, _LOSSLESS),
    Group("Opus and Voice", "microphone", "rose", False, _VOICE),
    Group("UserDefine", "person", "amber"),
)
