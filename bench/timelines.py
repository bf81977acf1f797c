"""Timelines: which pieces of which clips, and our project files for them."""
from collections import namedtuple
from xml.sax.saxutils import quoteattr

Piece = namedtuple("Piece", "path start_ms length_ms")


def cuts(paths, count=20, length_ms=3000):
    """Cuts that jump about in the clips, at frames of 25 a second, none at a key frame but by chance. Between frames,
    programs differ in which frame comes first, and could not be compared frame by frame."""
    return [Piece(paths[i % len(paths)], (i * 17713 + 1340) % 60000 // 40 * 40, length_ms) for i in range(count)]


class Project:
    """A project file in the making: tracks are added in the order video, overlay, sound, second sound."""

    def __init__(self, width=640, height=480):
        self.width, self.height = width, height
        self.files = []
        self.tracks = []

    def file(self, path):
        if path not in self.files:
            self.files.append(path)
        return self.files.index(path)

    def track(self, kind, pieces=(), speed=1.0, extra=""):
        """Pieces one behind the other; `extra` is what stands behind the sources (effects, transitions)."""
        lines, at = [], 0
        for piece in pieces:
            still = piece.path.endswith(".png")
            media = 5000 if still else int(piece.length_ms * speed)
            lines.append(f'<Source File="{self.file(piece.path)}" Stream="{kind}" Start="{at}" '
                         f'Stop="{at + piece.length_ms}" MediaStart="{piece.start_ms}" '
                         f'MediaStop="{piece.start_ms + media}" StretchMode="2"/>')
            at += piece.length_ms
        self.tracks.append(f'<Track Kind="{kind}">{"".join(lines)}{extra}</Track>')

    def write(self, path):
        media = "".join(f"<File Src={quoteattr(name)}/>" for name in self.files)
        size = f'Width="{self.width}" Height="{self.height}"'
        with open(path, "w", encoding="utf-8") as project:
            project.write(f'<QuillmontProject><Timeline FrameWidth="{self.width}" FrameHeight="{self.height}">'
                          f'{"".join(self.tracks)}</Timeline><MediaList>{media}</MediaList>'
                          f'<PreviewDimension {size}/></QuillmontProject>\n')


def write_cuts(path, pieces, width=640, height=480, speed=1.0):
    project = Project(width, height)
    project.track("Video", pieces, speed)
    project.track("Video")
    project.track("Audio", pieces, speed)
    project.track("Audio")
    project.write(path)
