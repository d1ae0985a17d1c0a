# The skin package ComRcRes.bff: a ZIP archive of stored entries (zip -0: no compression, -X: no
# extra attributes, -j: names without folders), description files first, then pictures.
#   kx_skin_package(<target> OUTPUT <file> FILES <description files and pictures...>)
find_program(KX_ZIP zip)

function(kx_skin_package target)
  cmake_parse_arguments(P "" "OUTPUT" "FILES" ${ARGN})
  if(NOT KX_ZIP)
    message(FATAL_ERROR "zip is needed to build the skin package (Debian package zip; ./kx installs it)")
  endif()
  add_custom_command(OUTPUT ${P_OUTPUT}
                     COMMAND ${CMAKE_COMMAND} -E rm -f ${P_OUTPUT}
                     COMMAND ${KX_ZIP} -q -0 -X -j ${P_OUTPUT} ${P_FILES}
                     DEPENDS ${P_FILES}
                     COMMENT "Packing ${P_OUTPUT}" VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${P_OUTPUT})
endfunction()
