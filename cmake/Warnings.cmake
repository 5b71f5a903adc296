# Warnings and sanitizers for our own targets only; no global flag edits.
function(quellmark_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Wdouble-promotion)
  # g++ 12 reports string concatenation at -O2 as an overlapping copy
  # (GCC bug 105329), a false alarm in library code we can't change.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(${target} PRIVATE -Wno-restrict)
  endif()
  if(QUELLMARK_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  quellmark_sanitize(${target})
endfunction()

function(quellmark_sanitize target)
  if(QUELLMARK_SANITIZE)
    # Division of a float by zero and a float too large for its integer are
    # not undefined to the compiler, but they are faults of ours: trap them.
    set(checks address,undefined,float-divide-by-zero,float-cast-overflow)
    target_compile_options(${target} PRIVATE -fsanitize=${checks} -fno-omit-frame-pointer
      -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=${checks})
  endif()
endfunction()
