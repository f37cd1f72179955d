# Language level, warnings and sanitizers, in one INTERFACE target that every target of ours links.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# The same for all, since libraries share precompiled headers only when their flags are the same.
add_compile_options(-pthread)

find_program(LUMORA_CCACHE ccache)
if(LUMORA_CCACHE)
  # Without these ccache keeps nothing that was compiled with a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros ${LUMORA_CCACHE})
  add_compile_options(
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess> "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endif()

add_library(lumora_warnings INTERFACE)
target_compile_options(lumora_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor -Wold-style-cast
  -Woverloaded-virtual -Wnull-dereference -Wimplicit-fallthrough)
if(LUMORA_WERROR)
  target_compile_options(lumora_warnings INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 reports null dereferences and overlapping copies inside the standard library's own headers.
  target_compile_options(lumora_warnings INTERFACE -Wno-null-dereference -Wno-restrict)
  # The library silences these in its headers, which GCC forgets when they come out of a precompiled header.
  target_compile_options(lumora_warnings INTERFACE -Wno-array-bounds -Wno-stringop-overflow -Wno-stringop-overread)
endif()

if(LUMORA_SANITIZE)
  # A report names functions and lines, which is all that it is read for; more takes long to write.
  add_compile_options(-fsanitize=${LUMORA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -g1)
  add_link_options(-fsanitize=${LUMORA_SANITIZE})
  # They need calls and addresses that a worker gives up.
  add_compile_definitions(LUMORA_SANITIZED)
endif()

# Pictures are not trusted, so an overrun is to end a program before it can be used. The checks of library calls need an
# optimizer; sanitizers bring their own.
if(NOT LUMORA_SANITIZE)
  add_compile_options(
    -fstack-protector-strong -fstack-clash-protection
    "$<$<CONFIG:Release>:SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>")
  if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    add_compile_options(-fcf-protection)
  endif()
  add_link_options(LINKER:-z,relro LINKER:-z,now)
endif()

# moc cannot parse the standard headers of C++20 when one of them comes before Qt's.
set(CMAKE_AUTOMOC_MOC_OPTIONS --include QtCore/qobject.h)

# Qt code: no implicit conversions between text and bytes, no deprecated calls.
add_library(lumora_qt_strict INTERFACE)
target_compile_definitions(lumora_qt_strict INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_NO_URL_CAST_FROM_STRING
  QT_NO_NARROWING_CONVERSIONS_IN_CONNECT QT_NO_FOREACH QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

# lumora_library(NAME SOURCES… [LINK …]): a static library of one layer.
function(lumora_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE lumora_warnings ${ARG_PRIVATE_LINK})
endfunction()

# lumora_room(NAME SOURCES … [LINK …] [PRIVATE_LINK …]): the library lumora_NAME, of which include/ is for everybody who
# links it, codec/ (through lumora_NAME_codec) for the rooms of the platform above it, and everything else for itself:
# lumora_NAME_private serves its tests and fuzzers alone.
function(lumora_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK;PRIVATE_LINK" ${ARGN})
  set(here ${CMAKE_CURRENT_SOURCE_DIR})
  add_library(lumora_${name} STATIC ${ARG_SOURCES})
  target_include_directories(lumora_${name} PUBLIC ${here}/include PRIVATE ${here} ${here}/codec)
  target_link_libraries(lumora_${name} PUBLIC ${ARG_LINK} PRIVATE lumora_warnings ${ARG_PRIVATE_LINK})
  add_library(lumora_${name}_codec INTERFACE)
  target_include_directories(lumora_${name}_codec INTERFACE ${here}/codec)
  target_link_libraries(lumora_${name}_codec INTERFACE lumora_${name})
  add_library(lumora_${name}_private INTERFACE)
  target_include_directories(lumora_${name}_private INTERFACE ${here})
  target_link_libraries(lumora_${name}_private INTERFACE lumora_${name}_codec ${ARG_PRIVATE_LINK})
endfunction()
