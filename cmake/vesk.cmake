# What every target of the project shares.

add_library(vesk_options INTERFACE)
target_compile_options(vesk_options INTERFACE -Wall -Wextra -Wconversion -Wshadow)
target_compile_definitions(vesk_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
                           QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(VESK_WERROR)
  target_compile_options(vesk_options INTERFACE -Werror)
endif()
if(VESK_SANITIZE)
  target_compile_options(vesk_options INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer
                         -fno-sanitize-recover=undefined
                         # g++ sees ghosts in instrumented code
                         $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(vesk_options INTERFACE -fsanitize=address,undefined)
endif()

# vesk_library(<name> SOURCES <file>... LINK <library>...)
# The LINK lists are the layering rule: a library sees what it lists and nothing else.
function(vesk_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE vesk_options)
endfunction()

# vesk_program(<name> SOURCES <file>... LINK <library>...)
function(vesk_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LINK} vesk_options)
endfunction()

# vesk_test(<name> [WINDOWS] [OFFICE] SOURCES <file>... LINK <library>...)
# One program a folder, run once under each locale the offices use. Every run has a private home,
# no display and its own time zone, so a test that leans on the machine fails here.
function(vesk_test name)
  cmake_parse_arguments(ARG "WINDOWS;OFFICE" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LINK} vesk_test_support vesk_options)
  set(zone_C UTC)
  set(zone_tr_TR.UTF-8 Europe/Istanbul)
  set(zone_de_DE.UTF-8 America/Los_Angeles)
  set(locales C tr_TR.UTF-8 de_DE.UTF-8)
  if(ARG_OFFICE)
    set(locales tr_TR.UTF-8) # the office's own start dominates; its locale is fixed by its private profile
  endif()
  foreach(locale ${locales})
    set(home ${CMAKE_BINARY_DIR}/home/${name}-${locale})
    file(MAKE_DIRECTORY ${home})
    add_test(NAME ${name}.${locale} COMMAND ${name})
    set_tests_properties(${name}.${locale} PROPERTIES TIMEOUT 300 ENVIRONMENT
      "LC_ALL=${locale};LANG=${locale};TZ=${zone_${locale}};QT_QPA_PLATFORM=offscreen;HOME=${home};XDG_CONFIG_HOME=${home}/.config;XDG_DATA_HOME=${home}/.local/share;XDG_CACHE_HOME=${home}/.cache")
  endforeach()
endfunction()
