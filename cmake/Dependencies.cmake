# What the system's packages give: scripts/setup installs them.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(pugixml REQUIRED)
find_package(CLI11 REQUIRED)
find_package(JPEG REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets Svg DBus)

pkg_check_modules(ffmpeg REQUIRED IMPORTED_TARGET
                  libavformat>=59 libavcodec>=59 libavutil>=57 libswscale>=6 libswresample>=4)
pkg_check_modules(fluidsynth REQUIRED IMPORTED_TARGET fluidsynth>=2)
pkg_check_modules(sdl REQUIRED IMPORTED_TARGET sdl2)

add_library(media_libraries INTERFACE)
target_link_libraries(media_libraries INTERFACE PkgConfig::ffmpeg PkgConfig::fluidsynth PkgConfig::sdl JPEG::JPEG Threads::Threads)
