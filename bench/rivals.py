"""The same timelines for other programs: ffmpeg, melt and ges-launch."""
import os
from urllib.request import pathname2url
from xml.sax.saxutils import escape

FPS = 25


def fitted(width, height):
    return (f"scale={width}:{height}:force_original_aspect_ratio=decrease:flags=bicubic,pad={width}:{height}:-1:-1,"
            f"setsar=1,fps={FPS}")


def ffmpeg_inputs(pieces, speed=1.0):
    words = []
    for piece in pieces:
        words += ["-ss", f"{piece.start_ms / 1000}", "-t", f"{piece.length_ms * speed / 1000}", "-i", piece.path]
    return words


def ffmpeg_graph(pieces, width=640, height=480, speed=1.0):
    """One graph that joins all inputs as [v] and [a]."""
    count = len(pieces)
    tempo = "" if speed == 1 else f"setpts=PTS/{speed},"
    graph = "".join(f"[{i}:v]{tempo}{fitted(width, height)}[v{i}];" for i in range(count))
    if speed != 1:
        graph += "".join(f"[{i}:a]atempo={speed}[a{i}];" for i in range(count))
    sound = "{}:a" if speed == 1 else "a{}"
    return graph + "".join(f"[v{i}][{sound.format(i)}]" for i in range(count)) + f"concat=n={count}:v=1:a=1[v][a]"


def ffmpeg_cuts(pieces, output, encoding, width=640, height=480, speed=1.0):
    return (["ffmpeg", "-v", "error", "-y"] + ffmpeg_inputs(pieces, speed)
            + ["-filter_complex", ffmpeg_graph(pieces, width, height, speed), "-map", "[v]", "-map", "[a]"]
            + encoding + [output])


def ges_cuts(pieces, output, encoding, width=640, height=480):
    words = ["ges-launch-1.0", f"--video-caps=video/x-raw,width={width},height={height},framerate={FPS}/1",
             "--audio-caps=audio/x-raw,rate=48000,channels=2"]
    for piece in pieces:
        words += ["+clip", piece.path, f"inpoint={piece.start_ms / 1000}", f"duration={piece.length_ms / 1000}"]
    return words + ["-o", "file://" + pathname2url(os.path.abspath(output)), "-f", encoding]


def frames(milliseconds):
    return round(milliseconds * FPS / 1000)


class MeltProject:
    """A melt file in the making: one producer for each file, one playlist for each track."""

    def __init__(self, width=640, height=480):
        self.width, self.height = width, height
        self.producers = {}
        self.playlists = []
        self.layers = []

    def producer(self, path, properties="", filters=""):
        if path not in self.producers:
            name = f"producer{len(self.producers)}"
            self.producers[path] = (name, f'<producer id="{name}"><property name="resource">{escape(path)}</property>'
                                          f'{properties}{filters}</producer>')
        return self.producers[path][0]

    def playlist(self, entries):
        """`entries`: (producer, first frame, count) one behind the other."""
        name = f"playlist{len(self.playlists)}"
        lines = "".join(f'<entry producer="{producer}" in="{first}" out="{first + count - 1}"/>'
                        for producer, first, count in entries)
        self.playlists.append(f'<playlist id="{name}">{lines}</playlist>')

    def cuts(self, pieces):
        self.playlist([(self.producer(piece.path), frames(piece.start_ms), frames(piece.length_ms))
                       for piece in pieces])

    def write(self, path):
        tracks = "".join(f'<track producer="playlist{i}"/>' for i in range(len(self.playlists)))
        producers = "".join(text for _, text in self.producers.values())
        with open(path, "w", encoding="utf-8") as project:
            project.write(f'<mlt><profile width="{self.width}" height="{self.height}" progressive="1" '
                          f'sample_aspect_num="1" sample_aspect_den="1" display_aspect_num="{self.width}" '
                          f'display_aspect_den="{self.height}" frame_rate_num="{FPS}" frame_rate_den="1" '
                          f'colorspace="601"/>{producers}{"".join(self.playlists)}'
                          f'<tractor id="tractor">{tracks}{"".join(self.layers)}</tractor></mlt>\n')


def melt(project, output, encoding):
    """Two frames are worked on at once and none is dropped."""
    return ["melt", "-silent", project, "-consumer", f"avformat:{output}", "real_time=-2", "threads=2"] + encoding


def melt_cuts(pieces, project, output, encoding):
    timeline = MeltProject()
    timeline.cuts(pieces)
    timeline.write(project)
    return melt(project, output, encoding)
