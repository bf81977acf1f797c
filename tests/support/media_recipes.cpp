#include "media_recipes.h"

namespace testmedia {
namespace {

const std::string kH264 = "-c:v libx264 -preset veryfast -crf 20 -pix_fmt yuv420p ";
const std::string kH264B = kH264 + "-bf 2 -g 12 -sc_threshold 0 ";
const std::string kAac = "-c:a aac -b:a 128k ";

Recipe movie(const std::string& name, const std::string& fps, int frames, const std::string& arguments,
             const std::string& notes = {}, Pictures pictures = Pictures::progressive, int rateHz = 48000)
{
    Recipe recipe{{name, "movie", fps, frames, 0, 0, rateHz, 2, notes}, pictures, arguments};
    recipe.entry.durationSeconds = frames / recipe.entry.framesPerSecond();
    return recipe;
}

Recipe silent(const std::string& name, const std::string& fps, int frames, const std::string& arguments,
              const std::string& notes = {}, Pictures pictures = Pictures::progressive)
{
    Recipe recipe = movie(name, fps, frames, arguments, notes, pictures, 0);
    recipe.entry.kind = "picture";
    recipe.entry.channels = 0;
    return recipe;
}

Recipe sound(const std::string& name, int rateHz, int channels, const std::string& arguments,
             const std::string& notes = {})
{
    return {{name, "sound", "0", 0, 0, 5, rateHz, channels, notes}, Pictures::none, arguments};
}

Recipe colours(const std::string& name, const std::string& space, const std::string& tag, bool full)
{
    const std::string range = full ? "pc" : "tv";
    return silent(name, "25", 50,
                  "-vf scale=out_color_matrix=" + space + ":out_range=" + range + ":flags=accurate_rnd,format=yuv420p "
                      + "-c:v libx264 -preset veryfast -crf 10 -bf 2 -g 12 -color_range " + range + " -colorspace "
                      + tag + " -color_primaries " + tag + " -color_trc " + tag,
                  "patches space=" + tag + " range=" + range, Pictures::patches);
}

Recipe derived(const std::string& from, Recipe recipe)
{
    recipe.from = from;
    return recipe;
}

// Things told of a file by the container rather than the codec: turns, aspects, time stamps.
void addOddTimes(std::vector<Recipe>& all)
{
    // Stored lying on their side; the matrix that turns them upright is written into the finished files.
    all.push_back(movie("rotated-90.mp4", "25", 50, kH264B + kAac + "-vf transpose=2", "rotation=90"));
    all.push_back(movie("rotated-270.mp4", "25", 50, kH264B + kAac + "-vf transpose=1", "rotation=270"));
    all.push_back(movie("anamorphic.mp4", "25", 75, kH264B + kAac + "-vf setsar=16/11", "aspect=16:11"));
    Recipe irregular = movie("vfr.mp4", "25", 125,
                             kH264B + kAac
                                 + "-vf settb=1/1000,setpts=N*40+mod(N*N*7\\,31)+500*gte(N\\,60) -vsync passthrough "
                                   "-enc_time_base 1/1000 -video_track_timescale 1000",
                             "times=vfr.txt");
    irregular.entry.durationSeconds = (2 * irregularMs(124) - irregularMs(123)) / 1000.0;
    all.push_back(irregular);

    Recipe late = movie("video-later.mkv", "25", 125,
                        kH264B + kAac + "-vf settb=1/1000,setpts=PTS+0.5/TB -vsync passthrough -enc_time_base 1/1000",
                        "video-start=0.5");
    late.entry.durationSeconds = 5.5;
    all.push_back(late);
    late = movie("sound-later.mkv", "25", 125, kH264B + kAac, "sound-start=0.7");
    late.soundArguments = "-itsoffset 0.7";
    late.entry.durationSeconds = 5.7;
    all.push_back(late);
    Recipe streamed = movie("no-index.mkv", "25", 125, kH264B + kAac, "no-index");
    streamed.muxer = "matroska";
    all.push_back(streamed);
}

void addAvi(std::vector<Recipe>& all)
{
    // Without a shift of all times by the sound encoder's delay, which would be a picture and a half here.
    const std::string mp3 = "-c:a libmp3lame -b:a 128k -avoid_negative_ts disabled ";
    const std::string mpeg4 = "-c:v mpeg4 -q:v 3 -g 15 ";
    const std::string lag = " sound-lag=-0.023"; // the container has no way to tell the delay of the encoder
    all.push_back(movie("mpeg4.avi", "25", 125, mpeg4 + "-bf 0 " + mp3, lag));
    all.push_back(movie("mpeg4-b.avi", "25", 125, mpeg4 + "-bf 2 " + mp3, "b-frames" + lag));
    all.push_back(
        movie("mpeg4-b-packed.avi", "25", 125, mpeg4 + "-bf 2 " + mp3, "b-frames packed" + lag)); // packed later
    all.push_back(movie("h264-b.avi", "25", 125, kH264B + mp3, "b-frames" + lag));
    all.push_back(movie("dropped.avi", "25", 125,
                        mpeg4 + "-bf 0 " + mp3 + "-vf select=not(between(n\\,40\\,42)) -vsync vfr",
                        "dropped=40..42" + lag)); // as captured: three empty entries stand in the index
    all.push_back(movie("mjpeg.avi", "25", 125, "-c:v mjpeg -q:v 3 -pix_fmt yuvj420p -c:a pcm_s16le"));
    all.push_back(movie("uncompressed.avi", "25", 50, "-c:v rawvideo -pix_fmt bgr24 -c:a pcm_s16le"));
    all.push_back(movie("uncompressed-yuy2.avi", "25", 50, "-c:v rawvideo -pix_fmt yuyv422 -c:a pcm_s16le"));
    all.push_back(movie("dv-pal.avi", "25", 50,
                        "-vf scale=720:576:interl=1,setsar=16/15 -c:v dvvideo -pix_fmt yuv420p -c:a pcm_s16le",
                        "interlaced=bff aspect=16:15", Pictures::interlaced));
}

void addBroadcast(std::vector<Recipe>& all)
{
    const std::string mpeg2 = "-c:v mpeg2video -q:v 3 -g 12 -bf 2 ";
    all.push_back(movie("mpeg1.mpg", "25", 125, "-c:v mpeg1video -q:v 3 -g 12 -bf 2 -c:a mp2 -b:a 128k -f mpeg", {},
                        Pictures::progressive, 44100));
    all.push_back(movie("mpeg2-open-gop.mpg", "25", 125, mpeg2 + "-c:a mp2 -b:a 192k -f vob", "b-frames open-gop"));
    all.push_back(movie("h264.ts", "25", 125, kH264B + kAac + "-f mpegts"));
    all.push_back(movie("mpeg2.ts", "25", 125, mpeg2 + "-c:a mp2 -b:a 192k -f mpegts", "b-frames open-gop"));
    all.push_back(movie("interlaced-tff-h264.mp4", "25", 75, kH264B + kAac + "-flags +ildct+ilme -top 1",
                        "interlaced=tff", Pictures::interlaced));
    all.push_back(movie("interlaced-tff-mpeg2.mpg", "25", 75,
                        mpeg2 + "-flags +ildct+ilme -top 1 -alternate_scan 1 -c:a mp2 -b:a 192k -f vob",
                        "interlaced=tff", Pictures::interlaced));
}

void addWeb(std::vector<Recipe>& all)
{
    const std::string vpx = "-deadline realtime -cpu-used 8 -b:v 600k -g 50 -lag-in-frames 0 -row-mt 0 ";
    all.push_back(movie("vp8.webm", "25", 125, "-c:v libvpx " + vpx + "-c:a libvorbis -q:a 4"));
    all.push_back(movie("vp9.webm", "25", 125, "-c:v libvpx-vp9 " + vpx + "-c:a libopus -b:a 96k", "sound-lag=0.007"));
    all.push_back(movie("theora.ogg", "25", 125, "-c:v libtheora -q:v 7 -c:a libvorbis -q:a 4"));
    all.push_back(movie("wmv2.wmv", "25", 125, "-c:v wmv2 -q:v 3 -g 25 -c:a wmav2 -b:a 128k"));
    all.push_back(movie("msmpeg4.asf", "25", 125, "-c:v msmpeg4 -q:v 3 -g 25 -c:a libmp3lame -b:a 128k"));
    all.push_back(movie("flv1.flv", "25", 125, "-c:v flv -q:v 3 -g 25 -c:a libmp3lame -b:a 128k", {},
                        Pictures::progressive, 44100));
}

} // namespace

std::vector<Recipe> movieRecipes()
{
    std::vector<Recipe> all{
        movie("h264.mp4", "25", 125, kH264B + kAac, "gop=12 b-frames"),
        movie("long-gop.mp4", "25", 300, kH264 + "-bf 2 -g 250 -keyint_min 250 -sc_threshold 0 " + kAac,
              "gop=250 b-frames"),
        movie("open-gop.mp4", "25", 125, kH264B + kAac + "-x264-params open-gop=1:keyint=12:min-keyint=12:bframes=3",
              "gop=12 open-gop b-frames"),
        movie("24p.mp4", "24000/1001", 120, kH264B + kAac),
        movie("30p.mp4", "30000/1001", 150, kH264B + kAac),
        movie("50p.mp4", "50", 250, kH264B + kAac),
        movie("60p.mp4", "60", 300, kH264B + kAac),
        silent("no-sound.mp4", "25", 50, kH264B),
        colours("colour-601-limited.mp4", "bt601", "smpte170m", false),
        colours("colour-601-full.mp4", "bt601", "smpte170m", true),
        colours("colour-709-limited.mp4", "bt709", "bt709", false),
        colours("colour-709-full.mp4", "bt709", "bt709", true),
    };
    addOddTimes(all);
    addAvi(all);
    addBroadcast(all);
    addWeb(all);
    return all;
}

std::vector<Recipe> soundRecipes()
{
    return {
        sound("mono-8k-u8.wav", 8000, 1, "-c:a pcm_u8"),
        sound("stereo-11k.wav", 11025, 2, "-c:a pcm_s16le"),
        sound("stereo-22k.wav", 22050, 2, "-c:a pcm_s16le"),
        sound("stereo-44k.wav", 44100, 2, "-c:a pcm_s16le"),
        sound("stereo-48k.wav", 48000, 2, "-c:a pcm_s16le"),
        sound("stereo-96k-24bit.wav", 96000, 2, "-c:a pcm_s24le"),
        sound("surround-51.wav", 48000, 6, "-c:a pcm_s16le"),
        sound("cbr.mp3", 44100, 2, "-c:a libmp3lame -b:a 128k"),
        sound("vbr-no-header.mp3", 44100, 2, "-c:a libmp3lame -q:a 4 -write_xing 0 -id3v2_version 0",
              "vbr no-header sound-lag=-0.025"),
        sound("tone.aiff", 44100, 2, "-c:a pcm_s16be"),
        sound("tone.au", 44100, 2, "-c:a pcm_s16be"),
        sound("tone.flac", 44100, 2, "-c:a flac"),
        sound("tone.ogg", 44100, 2, "-c:a libvorbis -q:a 5"),
        sound("tone.opus", 48000, 2, "-c:a libopus -b:a 96k"),
        sound("tone.wma", 44100, 2, "-c:a wmav2 -b:a 128k", "sound-lag=0.046"),
        sound("tone.m4a", 44100, 2, "-c:a aac -b:a 128k"),
    };
}

std::vector<Recipe> stillRecipes()
{
    std::vector<Recipe> all;
    int number = 10; // each still bears its own
    const auto add = [&](const std::string& name, const std::string& filter, const std::string& arguments,
                         const std::string& notes = {}) {
        const std::string only =
            "trim=start_frame=" + std::to_string(number) + ":end_frame=" + std::to_string(number + 1) + ",setpts=0";
        all.push_back({{name, "still", "25", 1, number, 0, 0, 0, notes},
                       Pictures::progressive,
                       "-vf " + only + (filter.empty() ? "" : ",") + filter + " -frames:v 1 " + arguments});
        ++number;
    };
    add("still.bmp", {}, "-c:v bmp -f image2 -update 1");
    add("still.gif", {}, "-c:v gif -f gif");
    add("still.jpg", {}, "-c:v mjpeg -q:v 2 -pix_fmt yuvj420p -f image2 -update 1");
    add("turned.jpg", "transpose=2", "-c:v mjpeg -q:v 2 -pix_fmt yuvj420p -f image2 -update 1", "orientation=6");
    add("large.jpg", "scale=3000:2000", "-c:v mjpeg -q:v 3 -pix_fmt yuvj420p -f image2 -update 1", "size=3000x2000");
    add("still.tga", {}, "-c:v targa -f image2 -update 1");
    add("still.png", {}, "-c:v png -f image2 -update 1");
    add("alpha.png",
        "format=rgba,geq=r=r(X\\,Y):g=g(X\\,Y):b=b(X\\,Y):a=if(between(Y\\,H*0.85\\,H*0.97)\\,if(lt(X\\,W/"
        "2)\\,0\\,128)\\,255)",
        "-c:v png -pix_fmt rgba -f image2 -update 1", "alpha");
    add("still.webp", {}, "-c:v libwebp -lossless 1 -f webp");
    Recipe animation{{"animated.gif", "animation", "10", 30, 0, 3, 0, 0, {}}, Pictures::progressive, "-c:v gif -f gif"};
    all.push_back(animation);
    return all;
}

std::vector<Recipe> derivedRecipes()
{
    Recipe edited = movie("edit-list.mov", "25", 95, "-c copy", "edit-list media-start=1.2");
    edited.inputArguments = "-ss 1.2"; // the key frame before is number 24: six pictures are there but never shown
    edited.entry.firstNumber = 30;
    Recipe fast = movie("work/faststart.mp4", "25", 125, "-c copy -movflags +faststart");
    fast.entry.kind = "work";
    // Each known to one test alone: the walks over the manifest pass them by.
    const auto odd = [](const std::string& name, const std::string& arguments) {
        return derived("h264.mp4", {{name, "odd", "0", 0, 0, 0, 0, 0, {}}, Pictures::none, arguments});
    };
    return {derived("h264.mp4", fast),
            derived("h264.mp4", edited),
            derived("h264.mp4", silent("bare.h264", "25", 125, "-c copy -an -f h264")),
            derived("h264.mp4", silent("bare.h265", "25", 125,
                                       "-an -c:v libx265 -preset ultrafast -x265-params "
                                       "bframes=3:keyint=12:log-level=none -f hevc")),
            odd("plain-sound.mov", "-vn -c:a pcm_s16le -ac 1"),
            odd("sound-hole.mkv", "-c copy -bsf:a setts=ts=TS+gte(N\\,100)*3600000"),
            odd("late-sound.mp4", "-c:a copy -bsf:a setts=ts=TS+180*48000 -c:v libx264 -preset ultrafast "
                                  "-vf loop=45:125:0,scale=160:120,setpts=N/25/TB")};
}

} // namespace testmedia
