# libFuzzer targets, built with Debian's clang whatever compiler the build uses, and run by ctest
# for a bounded time: `kx_fuzz_target(name SOURCES ... SEEDS <folder of files to pack as seeds>
# [SECONDS n] [DICT file])`; without SECONDS a target runs KX_FUZZ_SECONDS; DICT is a libFuzzer
# dictionary of the format's tokens.
find_program(KX_CLANGXX NAMES clang++ clang++-14 PATHS /usr/bin)
find_program(KX_ZIP zip)
set(KX_FUZZ_SECONDS 20 CACHE STRING "How long each fuzz target runs in the tests")

function(kx_fuzz_target name)
  cmake_parse_arguments(F "" "SEEDS;SECONDS;DICT" "SOURCES" ${ARGN})
  set(_dict)
  if(F_DICT)
    set(_dict -dict=${F_DICT})
  endif()
  if(NOT F_SECONDS)
    set(F_SECONDS ${KX_FUZZ_SECONDS})
  endif()
  if(NOT KX_CLANGXX)
    message(WARNING "clang++ not found: ${name} is not built (install clang and libclang-rt-14-dev)")
    return()
  endif()
  set(_sources)
  foreach(s ${F_SOURCES})
    get_filename_component(_abs ${s} ABSOLUTE)
    list(APPEND _sources ${_abs})
  endforeach()
  set(_exe ${CMAKE_CURRENT_BINARY_DIR}/fuzz/${name})
  add_custom_command(OUTPUT ${_exe}
                     COMMAND ${KX_CLANGXX} -std=c++17 -g -O1 -fsanitize=fuzzer,address,undefined
                             -fno-sanitize-recover=undefined -I${CMAKE_SOURCE_DIR}/src ${_sources} -o ${_exe}
                     DEPENDS ${_sources} COMMENT "Building fuzz target ${name} with clang" VERBATIM)
  # seeds: the files of the folder as one stored archive, the way the package is built
  set(_corpus ${CMAKE_CURRENT_BINARY_DIR}/${name}_corpus)
  set(_seed ${_corpus}/seed.zip)
  file(GLOB _seed_files ${F_SEEDS}/*.ini)
  if(KX_ZIP AND _seed_files)
    add_custom_command(OUTPUT ${_seed}
                       COMMAND ${CMAKE_COMMAND} -E make_directory ${_corpus}
                       COMMAND ${CMAKE_COMMAND} -E rm -f ${_seed}
                       COMMAND ${KX_ZIP} -q -0 -X -j ${_seed} ${_seed_files}
                       DEPENDS ${_seed_files} VERBATIM)
  else()
    add_custom_command(OUTPUT ${_seed} COMMAND ${CMAKE_COMMAND} -E make_directory ${_corpus}
                       COMMAND ${CMAKE_COMMAND} -E touch ${_seed} VERBATIM)
  endif()
  add_custom_target(${name} ALL DEPENDS ${_exe} ${_seed})
  # new inputs go to a scratch folder; the seed folder stays as built
  add_test(NAME ${name}
           COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=1
                   ${_exe} -max_total_time=${F_SECONDS} -rss_limit_mb=1024 -print_final_stats=1 ${_dict}
                   ${CMAKE_CURRENT_BINARY_DIR}/${name}_found ${_corpus})
  set_tests_properties(${name} PROPERTIES LABELS fuzz TIMEOUT 120)
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${name}_found)
endfunction()
