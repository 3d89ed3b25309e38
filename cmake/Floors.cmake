# The floors of the house, kept apart by the build.
#
# Each floor publishes one include root: a folder in the build tree that holds a single link, to
# that floor's sources. A target sees the roots of the floors that it links and no others, so
# "PlatformDesktop/..." does not resolve in the core, nor "Platform/..." in QuillboxCommon.

# quillbox_floor_root(<target> <scope> <name> <folder>): headers in <folder> are included as
# "<name>/...".
function(quillbox_floor_root target scope name folder)
  set(root "${CMAKE_BINARY_DIR}/floors/${name}")
  file(MAKE_DIRECTORY "${root}")
  file(CREATE_LINK "${folder}" "${root}/${name}" SYMBOLIC)
  target_include_directories(${target} ${scope} "${root}")
endfunction()

# quillbox_floor(<target> <name> <folder>): a static library of all sources below <folder>.
function(quillbox_floor target name folder)
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${folder}/*.cpp" "${folder}/*.h")
  add_library(${target} STATIC ${sources})
  quillbox_floor_root(${target} PUBLIC ${name} "${folder}")
  target_link_libraries(${target} PRIVATE quillbox_warnings)
endfunction()
