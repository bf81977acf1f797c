# What an ordinary build does not show: that every header compiles alone, and that the sources that are given a precompiled
# header include what they use. The target compiles objects and links nothing.

set(alone_sources)
file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR}/src/*.h)
foreach(header ${headers})
  set(alone ${CMAKE_BINARY_DIR}/alone/${header}.cpp)
  file(CONFIGURE OUTPUT ${alone} CONTENT "#include \"${header}\"\n")
  list(APPEND alone_sources ${alone})
endforeach()
add_library(headers_alone OBJECT EXCLUDE_FROM_ALL ${alone_sources})
target_link_libraries(headers_alone PRIVATE engine media_libraries pugixml::pugixml CLI11::CLI11 Qt6::Widgets Qt6::Svg)

set(objects $<TARGET_OBJECTS:headers_alone>)
foreach(folder . tests bench)
  get_property(targets DIRECTORY ${folder} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target ${targets})
    get_target_property(precompiled ${target} PRECOMPILE_HEADERS)
    if(precompiled)
      list(APPEND objects $<TARGET_OBJECTS:${target}>)
    endif()
  endforeach()
endforeach()
add_custom_target(headers DEPENDS ${objects})
