# The language level, the compiler cache, the fast linker and where built files go.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release)
endif()

# Executables find platform and the component beside themselves, so a built tree can be moved as a whole.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN")

# The cache may ignore what a precompiled header defines and in which folder the build happens.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      "${CMAKE_COMMAND}" -E env
      "CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_ctime,include_file_mtime"
      CCACHE_NOHASHDIR=true
      "${CCACHE_PROGRAM}")
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-fpch-preprocess)
elseif(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # Lets the cache recognise a precompiled header that was rebuilt from the same text.
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
endif()

if(UNIX AND NOT APPLE)
  find_program(MOLD_PROGRAM mold)
  find_program(LLD_PROGRAM ld.lld)
  find_program(GOLD_PROGRAM ld.gold)
  if(MOLD_PROGRAM)
    add_link_options(-fuse-ld=mold)
  elseif(LLD_PROGRAM)
    add_link_options(-fuse-ld=lld)
  elseif(GOLD_PROGRAM)
    add_link_options(-fuse-ld=gold)
  endif()
endif()

if(HOUSE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(HOUSE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all)
  add_link_options(-fsanitize=address,undefined)
  if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # The component hides its symbols: its copies of type data differ by address from platform's, which
    # these two would take for errors.
    add_compile_options(-fno-sanitize=function,vptr)
    add_link_options(-fno-sanitize=function,vptr)
  endif()
endif()
