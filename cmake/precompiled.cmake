# Headers that most sources of a library or program read, and that take longer to read than the sources themselves, are
# compiled once. The compiler's cache keeps such sources only where it is told to trust the times of these headers.
function(velmora_precompile target)
  target_precompile_headers(${target} PRIVATE ${ARGN})
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
endfunction()
