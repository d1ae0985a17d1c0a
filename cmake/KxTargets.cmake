# Options every target of the project gets: language level, warnings as errors, platform defines,
# sanitizers for the native build.
add_library(kx_options INTERFACE)
target_include_directories(kx_options INTERFACE ${CMAKE_SOURCE_DIR}/include ${CMAKE_SOURCE_DIR}/src
                                                 ${CMAKE_SOURCE_DIR})
target_compile_options(kx_options INTERFACE -Wall -Wextra -Werror -Wno-missing-field-initializers)
if(WIN32)
  target_compile_definitions(kx_options INTERFACE UNICODE _UNICODE STRICT NOMINMAX _WIN32_WINNT=0x0601
                                                  WINVER=0x0601 _WIN32_IE=0x0800)
  target_link_options(kx_options INTERFACE -static -Wl,--enable-stdcall-fixup)
elseif(KX_SANITIZE)
  target_compile_options(kx_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                              -fno-omit-frame-pointer)
  target_link_options(kx_options INTERFACE -fsanitize=address,undefined)
endif()

# A static library of portable code (compiles natively and with mingw).
function(kx_portable_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC kx_options)
  if(NOT WIN32)
    target_link_libraries(${name} PUBLIC kx_compat)
  endif()
endfunction()

# A native GoogleTest executable of tests/unit, run by ctest under the sanitizers.
# FIXTURE: a ctest fixture the tests need (files fetched into the build tree).
function(kx_unit_test name)
  cmake_parse_arguments(T "" "FIXTURE" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE kx_options ${T_LIBS} kx_compat GTest::gmock GTest::gtest_main)
  set(_kx_fixture)
  if(T_FIXTURE)
    set(_kx_fixture FIXTURES_REQUIRED ${T_FIXTURE})
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES LABELS unit TIMEOUT 120 ${_kx_fixture}
                       ENVIRONMENT "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1;UBSAN_OPTIONS=print_stacktrace=1")
endfunction()
