# One set of compiler settings for every target of the house.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(GENVARA_CCACHE ccache)
if(GENVARA_CCACHE)
  # Paths relative to the source tree, so that several checkouts share one cache.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros ${GENVARA_CCACHE})
endif()

# Settings that every target of ours links; the libraries of others keep their own.
add_library(genvara_settings INTERFACE)
target_compile_options(genvara_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  # A product and a sum stay two roundings: results are compared bit for bit with other computations.
  -ffp-contract=off
  # g++ 12 sees overlaps in std::string concatenations (its bug 105651) and unset members in empty
  # std::optionals (its bug 80635) that are not there. clang and the sanitizers watch over both.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict -Wno-maybe-uninitialized>)

# What users run reads files of strangers: the hardening that Debian asks of its own programs, and its check for stacks that clash.
# The sanitizers' builds watch closer than that.
target_compile_options(genvara_settings INTERFACE
  $<$<CONFIG:Release>:-fstack-protector-strong -fstack-clash-protection -Wformat -Werror=format-security -Wdate-time>)
target_compile_definitions(genvara_settings INTERFACE $<$<CONFIG:Release>:_FORTIFY_SOURCE=2>)
target_link_options(genvara_settings INTERFACE LINKER:-z,relro LINKER:-z,now)

if(GENVARA_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  add_link_options(-fsanitize=address,undefined)
endif()
if(GENVARA_COVERAGE)
  # Counted atomically: several threads size projects side by side.
  add_compile_options(--coverage -O0 -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
if(GENVARA_TIDY)
  find_program(GENVARA_CLANG_TIDY clang-tidy REQUIRED)
  set(CMAKE_CXX_CLANG_TIDY ${GENVARA_CLANG_TIDY} --warnings-as-errors=* --quiet)
endif()
