# One place for language level, warnings and sanitizers.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_INTERPROCEDURAL_OPTIMIZATION OFF)

add_compile_options(
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
  -Wimplicit-fallthrough -Wextra-semi -Wno-restrict -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang") # builds the fuzzers only
  add_compile_options(-Wno-error -Wno-unknown-warning-option)
endif()

# "address" stands for address and undefined behaviour together; "thread" for data races.
set(INSPECTOR_SANITIZE "" CACHE STRING "Sanitizers: empty, address or thread")
if(INSPECTOR_SANITIZE STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
elseif(INSPECTOR_SANITIZE STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread)
elseif(INSPECTOR_SANITIZE)
  message(FATAL_ERROR "INSPECTOR_SANITIZE is '${INSPECTOR_SANITIZE}'; use address or thread")
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()
