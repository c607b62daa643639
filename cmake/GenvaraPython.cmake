# GENVARA_PYTHON: the command that starts an interpreter which can load the module. A module with the sanitizers needs their library from
# the start, as the interpreter does not bring it; and memory that the interpreter hands out from pools of its own is not watched.
set(GENVARA_PYTHON /usr/bin/python3)
if(GENVARA_SANITIZE)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libclang_rt.asan-${CMAKE_SYSTEM_PROCESSOR}.so
    OUTPUT_VARIABLE sanitizer OUTPUT_STRIP_TRAILING_WHITESPACE)
  # What the interpreter itself keeps until its end is no leak of ours.
  set(GENVARA_PYTHON ${CMAKE_COMMAND} -E env LD_PRELOAD=${sanitizer} ASAN_OPTIONS=detect_leaks=0 PYTHONMALLOC=malloc /usr/bin/python3)
endif()
