"""The media that the measures work on, made once from a real video."""
import os
import subprocess
import sys

IMAGEIO = "/usr/lib/python3/dist-packages/imageio/resources/images/cockatoo.mp4"


class Clips:
    """Three clips of 66 s at 25 frames a second, made when the folder lacks them; others when they are asked for."""

    def __init__(self, folder):
        self.folder = folder
        os.makedirs(folder, exist_ok=True)
        source = os.environ.get("BENCH_VIDEO", IMAGEIO)
        if not os.path.exists(source):
            sys.exit(f"{source} is not there: install python3-imageio, or name a video in BENCH_VIDEO.")
        base = ["-stream_loop", "6", "-i", source, "-f", "lavfi", "-i", "sine=f=330:r=48000,tremolo=f=3:d=0.6",
                "-t", "66", "-map", "0:v", "-map", "1:a", "-r", "25"]
        h264 = ["-c:v", "libx264", "-preset", "medium", "-crf", "21", "-pix_fmt", "yuv420p", "-c:a", "aac"]
        self.long_gop = self.make("long-gop.mp4", base + ["-vf", "scale=1280:720"] + h264 + ["-g", "250"])
        self.short_gop = self.make("short-gop.mp4", base + ["-vf", "scale=1280:720"] + h264 + ["-g", "12"])
        self.mpeg4 = self.make("mpeg4.avi", base + ["-vf", "scale=768:576", "-c:v", "mpeg4", "-q:v", "4",
                                                    "-c:a", "libmp3lame"])
        self.mixed = [self.long_gop, self.short_gop, self.mpeg4]

    def path(self, name):
        return os.path.join(self.folder, name)

    def make(self, name, arguments):
        path = self.path(name)
        if not os.path.exists(path):
            part = self.path("part-" + name)
            subprocess.run(["ffmpeg", "-v", "error", "-y"] + arguments + [part], check=True)
            os.rename(part, path)
        return path

    def hour(self):
        return self.make("hour.mp4", ["-stream_loop", "54", "-i", self.short_gop, "-t", "3600", "-c", "copy"])

    def title(self):
        """A still: yellow writing with black edges on clean magenta, which is the key colour."""
        words = ("drawtext=text='By the sea':fontsize=72:fontcolor=yellow:borderw=3:x=(w-tw)/2:y=h*0.7,"
                 "drawtext=text='a film of the summer':fontsize=32:fontcolor=white:borderw=2:x=(w-tw)/2:y=h*0.87")
        return self.make("title.png", ["-f", "lavfi", "-i", "color=0xff00ff:s=640x480,format=rgb24," + words,
                                       "-frames:v", "1"])

    def green(self):
        """A clip of 15 s: a turning picture that wanders over a clean green ground, the key colour."""
        graph = ("color=0x00ff00:s=640x480:r=25[ground];testsrc2=s=240x240:r=25[mover];"
                 "[ground][mover]overlay=x='200+160*sin(t)':y='120+100*cos(t*1.3)'")
        return self.make("green.mp4", ["-filter_complex", graph, "-t", "15", "-c:v", "libx264", "-crf", "14",
                                       "-g", "25", "-pix_fmt", "yuv420p"])

    def music(self):
        return self.make("music.mp3", ["-f", "lavfi", "-i", "aevalsrc='0.2*sin(2*PI*t*(220+110*floor(mod(t*2,4))))|"
                                       "0.2*sin(2*PI*t*(330+110*floor(mod(t*3,4))))':s=48000", "-t", "40",
                                       "-c:a", "libmp3lame", "-b:a", "160k"])
