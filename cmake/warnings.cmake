# What every target of the project is compiled with.
add_library(velmora_flags INTERFACE)
target_compile_options(velmora_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps in std::string that aren't there (its bug 105651).
  target_compile_options(velmora_flags INTERFACE -Wno-restrict)
endif()
target_include_directories(velmora_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(VELMORA_SANITIZE)
  target_compile_options(velmora_flags INTERFACE -fsanitize=${VELMORA_SANITIZE} -fno-sanitize-recover=all
                                                 -fno-omit-frame-pointer)
  target_link_options(velmora_flags INTERFACE -fsanitize=${VELMORA_SANITIZE})
endif()
