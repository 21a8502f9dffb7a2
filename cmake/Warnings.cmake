# Every target of the house links this; a warning is an error with both compilers.

add_library(house_warnings INTERFACE)
target_compile_options(
  house_warnings
  INTERFACE -Werror
            -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wdouble-promotion
            -Wold-style-cast
            -Wcast-align
            -Wformat=2
            -Wimplicit-fallthrough
            -Wmisleading-indentation
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wextra-semi
            -Wunused
            # Rows of the tables name what they set and leave the rest at its default.
            -Wno-missing-field-initializers
            # g++ 12 takes "text" + string for overlapping memory when it optimises.
            $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
            $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond>
            $<$<CXX_COMPILER_ID:GNU>:-Wlogical-op>
            $<$<CXX_COMPILER_ID:GNU>:-Wsuggest-override>
            $<$<CXX_COMPILER_ID:Clang>:-Winconsistent-missing-destructor-override>
            $<$<CXX_COMPILER_ID:Clang>:-Wunreachable-code>
            $<$<CXX_COMPILER_ID:Clang>:-Wcomma>)
