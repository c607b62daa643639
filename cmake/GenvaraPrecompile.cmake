# precompile_headers(TARGET plain|toolkit [FROM target | MORE header...])
#
# Most of a compiler's time goes into the headers of others, the same ones in each source. They are read once for a target, or for all
# that take them FROM another, which has to be compiled with the same options. Headers of ours are never among them, so that a change
# builds what depends on it and no more.
#
# Sources name what they use all the same: the preset "tidy" does without, and they would not compile there otherwise.
option(GENVARA_PRECOMPILE "Read the headers of libraries once for many sources" ON)

set(plain_headers <algorithm> <array> <cmath> <cstddef> <cstdint> <filesystem> <functional> <iterator> <limits> <map> <memory> <optional>
  <span> <string> <string_view> <system_error> <tuple> <utility> <variant> <vector> <fmt/format.h>)
set(toolkit_headers ${plain_headers} <QtGui/QtGui> <QtWidgets/QtWidgets>)

function(precompile_headers TARGET KIND)
  cmake_parse_arguments(PRECOMPILE "" "FROM" "MORE" ${ARGN})
  if(NOT GENVARA_PRECOMPILE)
    return()
  endif()
  if(PRECOMPILE_FROM)
    target_precompile_headers(${TARGET} REUSE_FROM ${PRECOMPILE_FROM})
  else()
    target_precompile_headers(${TARGET} PRIVATE ${${KIND}_headers} ${PRECOMPILE_MORE})
  endif()
  # -fpch-preprocess: without it ccache does not see that the headers were read before.
  # What is inlined from them no longer counts as a library's code, and g++ 12 sees lengths and bounds in std::string (its bug 105651)
  # that are not there. clang and the sanitizers watch over them.
  target_compile_options(${TARGET} PRIVATE
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess -Wno-stringop-overflow -Wno-stringop-overread -Wno-array-bounds>)
endfunction()
