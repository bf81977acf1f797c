# How everything is compiled: C++20, warnings as errors, ccache and mold where they are installed.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(ccache_program ccache)
if(ccache_program AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ccache_program})
endif()

add_library(house_flags INTERFACE)
target_compile_options(house_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor $<$<BOOL:${QUILLMONT_WERROR}>:-Werror>
                                               -Wno-restrict) # GCC 12 sees overlaps in assigned texts that are none

find_program(mold_program mold)
if(mold_program)
  target_link_options(house_flags INTERFACE -fuse-ld=mold)
endif()

if(QUILLMONT_SANITIZE)
  target_compile_options(house_flags INTERFACE -fsanitize=${QUILLMONT_SANITIZE} -fno-omit-frame-pointer
                                               -fno-sanitize-recover=all)
  target_link_options(house_flags INTERFACE -fsanitize=${QUILLMONT_SANITIZE})
endif()
