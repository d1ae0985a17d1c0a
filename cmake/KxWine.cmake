# Tests of tests/win run under wine64 in a private prefix that a ctest fixture prepares.
set(KX_WINE ${CMAKE_CROSSCOMPILING_EMULATOR})
set(KX_WINEPREFIX ${CMAKE_BINARY_DIR}/wineprefix CACHE PATH "Private Wine prefix of the tests")
set(KX_WINE_ENV env -u DISPLAY -u WAYLAND_DISPLAY WINEPREFIX=${KX_WINEPREFIX} WINEDEBUG=-all
                WINEDLLOVERRIDES=mscoree,mshtml=)

if(KX_WINE)
  # The server it starts stays up while tests run and ends by itself shortly after the last one.
  add_test(NAME wine_setup COMMAND ${KX_WINE_ENV} ${CMAKE_SOURCE_DIR}/cmake/wine-setup.sh ${KX_WINE} null)
  set_tests_properties(wine_setup PROPERTIES FIXTURES_SETUP wine TIMEOUT 300 LABELS wine)
endif()

# A GoogleTest executable of tests/win: built for both architectures, run where Wine can run it.
# DESKTOP: the tests activate windows (dialogs driven like a user). The Wine processes of one prefix
# share one desktop, so a window shown by another test would take the activation, and with it the
# keyboard focus, away in the middle of a script: such tests take the desktop one at a time.
# FIXTURE: the ctest fixture the tests need instead of the plain Wine prefix (it must itself need
# the prefix's fixture, "wine").
function(kx_win_test name)
  cmake_parse_arguments(T "DESKTOP" "FIXTURE" "SOURCES;LIBS;DEPENDS" ${ARGN})
  add_executable(${name} ${T_SOURCES})
  target_link_libraries(${name} PRIVATE kx_options ${T_LIBS} GTest::gmock GTest::gtest_main)
  if(T_DEPENDS)
    add_dependencies(${name} ${T_DEPENDS})
  endif()
  if(KX_WINE)
    set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR "${KX_WINE_ENV};${KX_WINE}")
    set(_kx_lock)
    if(T_DESKTOP)
      set(_kx_lock RESOURCE_LOCK wine_desktop)
    endif()
    set(_kx_fixture wine)
    if(T_FIXTURE)
      set(_kx_fixture ${T_FIXTURE})
    endif()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
                         PROPERTIES FIXTURES_REQUIRED ${_kx_fixture} TIMEOUT 120 LABELS wine ${_kx_lock})
  endif()
endfunction()
