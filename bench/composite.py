"""The composite: cuts under a keyed title and a keyed clip, six effects, two sound tracks.

        0        3   5    8  10   13  15   18  20    23  25     28  30 s
    V   | cuts of 3 s, jumping about in three clips                 |
    O   | title.png, magenta is clear     | green.mp4, green is clear |
    E   | Fade   |   Pixelate Blur    Wave      Emboss    Engrave   |
    A1  | the sound of the cuts                                     |
    A2  | music                                                     |

A timeline of ours has one overlay track, so the title has the first half and the clip the second. Effects are worked
out only where they stand. For ffmpeg there are two forms. The fastest that we know keys the still once and repeats the
result, and draws waves with a map of shifts; the plain one, which its manual leads to, reads and keys the still for
every frame and draws waves with an equation, and takes about twice as long.
"""
from rivals import MeltProject, ffmpeg_inputs, fitted, frames, melt
from timelines import Piece, Project, cuts

LENGTH_MS = 30000
HALF_MS = LENGTH_MS // 2
EFFECTS = {"Fade": 0, "Pixelate": 5, "Blur": 10, "Wave": 15, "Emboss": 20, "Engrave": 25}
EFFECT_S = 3


def layers(clips):
    base = cuts(clips.mixed, 10)
    over = [Piece(clips.title(), 0, HALF_MS), Piece(clips.green(), 0, HALF_MS)]
    return base, over, [Piece(clips.music(), 1230, LENGTH_MS)]


def write_ours(clips, path):
    base, over, music = layers(clips)
    project = Project()
    effects = "".join(f'<Effect Name="{name}" Start="{at * 1000}" Stop="{(at + EFFECT_S) * 1000}"/>'
                      for name, at in EFFECTS.items())
    keys = (f'<Transition Name="DxtKey" Start="0" Stop="{HALF_MS}" Red="255" Green="0" Blue="255"/>'
            f'<Transition Name="DxtKey" Start="{HALF_MS}" Stop="{LENGTH_MS}" Red="0" Green="255" Blue="0"/>')
    project.track("Video", base, extra=effects)
    project.track("Video", over, extra=keys)
    project.track("Audio", base)
    project.track("Audio", music)
    project.write(path)


def ffmpeg(clips, output, encoding, plain=False):
    base, over, music = layers(clips)
    count = len(base)
    still, clip, sound = count, count + 1, count + 2
    graph = "".join(f"[{i}:v]{fitted(640, 480)}[v{i}];" for i in range(count))
    graph += "".join(f"[v{i}][{i}:a]" for i in range(count)) + f"concat=n={count}:v=1:a=1[base][voices];"
    repeats = frames(HALF_MS)
    repeat = "" if plain else f"loop=loop={repeats - 1}:size=1,setpts=N/25/TB,"
    graph += (f"[{still}:v]colorkey=0xff00ff:0.2:0.1,format=yuva420p,{repeat}fps=25,setsar=1[title];"
              f"[{clip}:v]colorkey=0x00ff00:0.3:0.1,format=yuva420p,fps=25,setsar=1[mover];"
              "[title][mover]concat=n=2[over];[base][over]overlay,")
    graph += ",".join(effect_filters(plain)) + "[v];"
    graph += f"[voices][{sound}:a]amix=inputs=2:duration=longest:normalize=0[a]"
    title = ["-loop", "1", "-t", f"{HALF_MS / 1000}"] * plain + ["-i", over[0].path]
    inputs = ffmpeg_inputs(base) + title + ["-i", over[1].path] + ffmpeg_inputs(music)
    return (["ffmpeg", "-v", "error", "-y"] + inputs
            + ["-filter_complex", graph, "-map", "[v]", "-map", "[a]"] + encoding + [output])


def during(at, length=EFFECT_S):
    return f"enable='between(t,{at},{at + length - 0.001})'"


def effect_filters(plain):
    """The effects as filters, each on in its own stretch alone."""
    fade = EFFECTS["Fade"]
    half = EFFECT_S / 2
    return [f"fade=t=out:st={fade}:d={half}:{during(fade, half)}",
            f"fade=t=in:st={fade + half}:d={half}:{during(fade + half, half)}",
            f"pixelize=w=24:h=24:{during(EFFECTS['Pixelate'])}",
            f"gblur=sigma=8:{during(EFFECTS['Blur'])}",
            equation_wave() if plain else wave(),
            relief(2, during(EFFECTS["Emboss"])),
            relief(-2, during(EFFECTS["Engrave"]))]


def wave():
    """Lines shifted along a sine. The map of shifts is drawn once, taller than the picture, and slides behind it:
    far faster than an equation for each pixel. The filter takes no halved colour, so frames outside pass it by."""
    begin, end = EFFECTS["Wave"], EFFECTS["Wave"] + EFFECT_S
    shifts = ("color=gray:s=640x640:r=25,format=gray,geq=lum='128+16*sin(2*PI*Y/160)',trim=end_frame=1,"
              f"loop=-1:1,setpts=N/25/TB,trim=end={EFFECT_S},crop=640:480:0:'mod(n*4.8,160)'[shifts];")
    still = f"color=gray:s=640x480:r=25:d={EFFECT_S},format=gray[still];"
    return (f"split=3[early][middle][late];[early]trim=0:{begin}[early];"
            f"[middle]trim={begin}:{end},setpts=PTS-STARTPTS[middle];[late]trim={end},setpts=PTS-STARTPTS[late];"
            f"{shifts}{still}[middle][shifts][still]displace=edge=smear,format=yuv420p[middle];"
            "[early][middle][late]concat=n=3")


def equation_wave():
    def moved(plane, reach, length):
        return f"{plane}(X+{reach}*sin(2*PI*(Y/{length}-T*0.75)),Y)"

    return (f"geq=lum='{moved('lum', 16, 160)}':cb='{moved('cb', 8, 80)}':cr='{moved('cr', 8, 80)}':"
            f"{during(EFFECTS['Wave'])}")


def relief(gain, enable):
    """Grey, by how brightness falls across a pixel; colour becomes none."""
    none = "0 0 0 0 0 0 0 0 0"
    return (f"convolution=0m='{gain} 0 0 0 0 0 0 0 {-gain}':1m='{none}':2m='{none}':0rdiv=1:1rdiv=1:2rdiv=1:"
            f"0bias=128:1bias=128:2bias=128:{enable}")


def melt_command(clips, project, output, encoding):
    base, over, music = layers(clips)
    timeline = MeltProject()
    timeline.cuts(base)

    def prop(name, value):
        return f'<property name="{name}">{value}</property>'

    def keyed(path, colour):
        return timeline.producer(path, filters=f'<filter>{prop("mlt_service", "chroma")}{prop("key", colour)}'
                                               f'{prop("variance", 0.2)}</filter>')

    title = keyed(over[0].path, "#ff00ff")
    mover = keyed(over[1].path, "#00ff00")
    timeline.playlist([(title, 0, frames(HALF_MS)), (mover, 0, frames(HALF_MS))])
    timeline.cuts(music)
    timeline.layers.append(f'<transition>{prop("mlt_service", "composite")}{prop("a_track", 0)}{prop("b_track", 1)}'
                           f'{prop("geometry", "0/0:100%x100%")}{prop("progressive", 1)}{prop("distort", 0)}'
                           '</transition>')
    timeline.layers.append(f'<transition>{prop("mlt_service", "mix")}{prop("a_track", 0)}{prop("b_track", 2)}'
                           f'{prop("always_active", 1)}{prop("sum", 1)}</transition>')
    none = "0 0 0 0 0 0 0 0 0"

    def melt_relief(gain):
        planes = "".join(prop(f"av.{i}m", none) + prop(f"av.{i}rdiv", 1) + prop(f"av.{i}bias", 128) for i in (1, 2))
        return ("avfilter.convolution", prop("av.0m", f"{gain} 0 0 0 0 0 0 0 {-gain}") + prop("av.0rdiv", 1)
                + prop("av.0bias", 128) + planes)

    half = frames(EFFECT_S * 500)
    services = {"Fade": ("brightness", prop("level", f"0=1;{half}=0;{2 * half}=1")),
                "Pixelate": ("avfilter.pixelize", prop("av.w", 24) + prop("av.h", 24)),
                "Blur": ("avfilter.gblur", prop("av.sigma", 8)),
                "Wave": ("wave", prop("wave", 10) + prop("deformX", 1) + prop("deformY", 0)),
                "Emboss": melt_relief(2), "Engrave": melt_relief(-2)}
    for name, (service, settings) in services.items():
        first = frames(EFFECTS[name] * 1000)
        timeline.layers.append(f'<filter in="{first}" out="{first + 2 * half - 1}">{prop("mlt_service", service)}'
                               f"{settings}</filter>")
    timeline.write(project)
    return melt(project, output, encoding)
