# Renders the skin package's pictures: every SVG of resources/skin/pictures becomes a PNG of the
# same name (spaces and case kept) with rsvg-convert, at the size the SVG gives.
#
#   kx_render_skin_pictures(OUT_DIR <dir> OUTPUT_VAR <var> [TARGET <name>])
#
# Adds one custom command per picture, in the caller's directory, and sets <var> in the caller's
# scope to the list of PNG paths: list them as DEPENDS of a custom command of the same directory
# (the package), or ask for TARGET, a custom target built with ALL that depends on all of them.
find_program(KX_RSVG_CONVERT rsvg-convert)

function(kx_render_skin_pictures)
  cmake_parse_arguments(P "" "OUT_DIR;OUTPUT_VAR;TARGET" "" ${ARGN})
  if(NOT P_OUT_DIR OR NOT P_OUTPUT_VAR)
    message(FATAL_ERROR "kx_render_skin_pictures: OUT_DIR and OUTPUT_VAR are needed")
  endif()
  if(NOT KX_RSVG_CONVERT)
    message(FATAL_ERROR "rsvg-convert not found: install the Debian package librsvg2-bin")
  endif()
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/resources/skin/pictures/*.svg")
  set(pngs)
  foreach(svg IN LISTS sources)
    get_filename_component(name "${svg}" NAME_WLE)
    set(png "${P_OUT_DIR}/${name}.png")
    add_custom_command(OUTPUT "${png}"
                       COMMAND "${CMAKE_COMMAND}" -E make_directory "${P_OUT_DIR}"
                       COMMAND "${KX_RSVG_CONVERT}" --format=png -o "${png}" "${svg}"
                       DEPENDS "${svg}"
                       COMMENT "Rendering skin picture ${name}.png"
                       VERBATIM)
    list(APPEND pngs "${png}")
  endforeach()
  if(P_TARGET)
    add_custom_target(${P_TARGET} ALL DEPENDS ${pngs})
  endif()
  set(${P_OUTPUT_VAR} "${pngs}" PARENT_SCOPE)
endfunction()
