# What every target of ours is compiled with: warnings as errors, and the sanitizers on request.

add_library(plenzo_compiler INTERFACE)

target_compile_options(plenzo_compiler INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wsuggest-override -Werror)

# GCC 12 sees faults that are not there once it optimizes: in `"text" + std::to_string(number)`, and
# in moving an optional that holds a shared pointer. Clang and the sanitizers look for the real ones.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(plenzo_compiler INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()

# The release build is what gets packaged: hardened as distributions ask for, and with as much about
# lines and functions as a backtrace needs, the same wherever it was built. Position independence is
# the compilers' own default there; scripts/check-package sees to it that it came out so.
target_compile_options(plenzo_compiler INTERFACE $<$<CONFIG:Release>:
    -g1 -ffile-prefix-map=${CMAKE_SOURCE_DIR}=. -Wdate-time
    -fstack-protector-strong -Wformat=2 -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
target_link_options(plenzo_compiler INTERFACE $<$<CONFIG:Release>:-Wl,-z,relro,-z,now>)

if(PLENZO_SANITIZE)
    target_compile_options(plenzo_compiler INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(plenzo_compiler INTERFACE -fsanitize=address,undefined)
endif()

if(PLENZO_FUZZ)
    target_compile_options(plenzo_compiler INTERFACE -fsanitize=fuzzer-no-link)
endif()
