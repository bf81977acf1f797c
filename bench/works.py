"""The saves that are timed: ours, ffmpeg's with the same encoder and settings, and those of other editors."""
import os
from dataclasses import dataclass, field

import composite
import rivals
from harness import RENDER, output_of
from timelines import Piece, cuts, write_cuts


@dataclass
class Peer:
    command: list
    asked: float = None  # ratio of our time to this program's


@dataclass
class Work:
    name: str
    ours: list
    ffmpeg: list
    asked: float = None  # ratio of our time to ffmpeg's; None where nothing is asked
    peers: dict = field(default_factory=dict)
    most_rounds: int = 1000
    ffmpeg_gib: float = 0  # memory that ffmpeg needs


@dataclass
class Encoding:
    """One way of saving, in the words of each program."""

    ours: list
    ffmpeg: list
    melt: list = None
    ges: str = None
    extension: str = "avi"


PCM = ["-c:a", "pcm_s16le", "-ar", "48000", "-ac", "2"]
MJPEG = Encoding(["--video-compressor", "Motion JPEG", "--audio-compressor", "PCM"],
                 ["-c:v", "mjpeg", "-q:v", "3"] + PCM,
                 ["f=avi", "vcodec=mjpeg", "qscale=3", "pix_fmt=yuvj420p", "acodec=pcm_s16le", "ar=48000",
                  "channels=2"],
                 "video/x-msvideo:image/jpeg|element-properties,quality=92:audio/x-raw,format=S16LE")
MPEG4 = Encoding(["--video-compressor", "MPEG-4", "--audio-compressor", "MP3"],
                 ["-c:v", "mpeg4", "-q:v", "4", "-c:a", "libmp3lame", "-b:a", "192k", "-ar", "48000", "-ac", "2"],
                 None,
                 "video/x-msvideo:video/mpeg,mpegversion=4,systemstream=false|element-properties,qmin=4,qmax=4:"
                 "audio/mpeg,mpegversion=1,layer=3|element-properties,target=bitrate,bitrate=192")

MP3 = ["-c:a", "libmp3lame", "-b:a", "192k", "-ar", "48000", "-ac", "2"]
H264 = Encoding(["--video-compressor", "H.264", "--audio-compressor", "MP3"],
                ["-c:v", "libx264", "-preset", "veryfast", "-crf", "23", "-bf", "0"] + MP3)
H264_GROUPS = Encoding(["--video-compressor", "H.264", "--audio-compressor", "PCM", "--key-frame-rate", "50"],
                       ["-c:v", "libx264", "-preset", "veryfast", "-crf", "23", "-bf", "0", "-g", "50"] + PCM)

PROFILE = "Measure (1.1 Mbps)"


def windows_media(clips):
    """From a profile of the user's. Key frames are as far apart on both sides, and both may go to the finest."""
    folder = clips.path("profiles")
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "measure.xml"), "w", encoding="utf-8") as profile:
        profile.write('<?xml version="1.0" encoding="UTF-8"?>\n'
                      f'<quillmont-profile version="1" name="{PROFILE}">\n'
                      '  <video width="640" height="480" fps="25" bitrate="1000000" quality="100" '
                      'key-frame-seconds="8"/>\n  <audio rate="48000" channels="2" bitrate="96000"/>\n'
                      '</quillmont-profile>\n')
    os.environ["QUILLMONT_PROFILES"] = folder
    return Encoding(["--profile", PROFILE],
                    ["-c:v", "wmv2", "-b:v", "1M", "-g", "200", "-c:a", "wmav2", "-b:a", "96k", "-ar", "48000",
                     "-ac", "2"], extension="wmv")


class Table:
    """The works in the making."""

    def __init__(self, clips):
        self.clips = clips
        self.works = {}

    def add_cuts(self, name, pieces, encoding, asked=None, size=(640, 480), speed=1.0):
        project, (ours, theirs) = self.clips.path(name + ".qpj"), self.outputs(name, encoding)
        write_cuts(project, pieces, *size, speed)
        self.works[name] = Work(name, save(project, ours, encoding),
                                rivals.ffmpeg_cuts(pieces, theirs, encoding.ffmpeg, *size, speed), asked)
        return self.works[name]

    def add_composite(self, name, encoding, asked=None, plain=False):
        project, (ours, theirs) = self.clips.path(name + ".qpj"), self.outputs(name, encoding)
        composite.write_ours(self.clips, project)
        self.works[name] = Work(name, save(project, ours, encoding),
                                composite.ffmpeg(self.clips, theirs, encoding.ffmpeg, plain), asked)
        return self.works[name]

    def add_copies(self, name, encoding, asked, size):
        """Cuts of a clip that was saved as the movie is to be."""
        source = self.clips.path(name + "-source.avi")
        if not os.path.exists(source):
            width, height = size
            output_of([RENDER, self.clips.short_gop, "-o", source, "--size", f"{width}x{height}"] + encoding.ours)
        return self.add_cuts(name, cuts([source]), encoding, asked, size)

    def outputs(self, name, encoding):
        return [self.clips.path(f"{name}-{side}.{encoding.extension}") for side in ("ours", "theirs")]


def save(project, output, encoding):
    return [RENDER, project, "-o", output, "--fps", "25"] + encoding.ours


def works(clips):
    """All works by name."""
    table = Table(clips)
    path = clips.path
    mixed = cuts(clips.mixed)
    work = table.add_cuts("cuts-mixed-mjpeg", mixed, MJPEG, 0.75)
    work.peers["melt"] = Peer(rivals.melt_cuts(mixed, path("cuts.mlt"), path("cuts-melt.avi"), MJPEG.melt))
    work.peers["ges"] = Peer(rivals.ges_cuts(mixed, path("cuts-ges.avi"), MJPEG.ges))
    table.add_cuts("cuts-long-gop-mjpeg", cuts([clips.long_gop]), MJPEG, 0.75)
    table.add_cuts("cuts-short-gop-mjpeg", cuts([clips.short_gop]), MJPEG, 0.75)
    table.add_cuts("cuts-mpeg4avi-mjpeg", cuts([clips.mpeg4]), MJPEG, 0.75)
    table.add_cuts("whole-short-gop-mjpeg", [Piece(clips.short_gop, 0, 60000)], MJPEG)
    table.add_cuts("cuts-mixed-mpeg4-mp3", mixed, MPEG4, 0.75)
    table.add_cuts("cuts-mixed-wmv", mixed, windows_media(clips), 0.75)
    work = table.add_composite("composite", MJPEG, 0.4)
    work.peers["melt"] = Peer(composite.melt_command(clips, path("composite.mlt"), path("composite-melt.avi"),
                                                     MJPEG.melt))
    table.add_composite("composite-plain", MJPEG, plain=True)
    table.add_cuts("half-speed", cuts([clips.short_gop], 5, 6000), MJPEG, 0.7, speed=0.5)
    table.add_cuts("double-speed", cuts([clips.short_gop], 5, 6000), MJPEG, 0.7, speed=2.0)
    table.add_cuts("cuts-mixed-720p-mjpeg", mixed, MJPEG, 0.8, (1280, 720))
    table.add_cuts("cuts-mixed-720p-h264", mixed, H264, 0.8, (1280, 720))
    table.add_copies("copies-mjpeg", MJPEG, 0.05, (640, 480))
    table.add_copies("copies-h264", H264_GROUPS, 0.3, (1280, 720))
    many = cuts(clips.mixed, 400, 1500)
    work = table.add_cuts("400-cuts-mpeg4-mp3", many, MPEG4, 0.5)
    work.peers["ges"] = Peer(rivals.ges_cuts(many, path("400-cuts-ges.avi"), MPEG4.ges), 0.65)
    work.most_rounds, work.ffmpeg_gib = 2, 9
    return table.works
