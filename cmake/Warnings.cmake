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
    target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer
      -fno-sanitize-recover=all)
    target_link_options(${target} PRIVATE -fsanitize=address,undefined)
  endif()
endfunction()
