# What every target of ours is compiled with: warnings as errors, and the sanitizers on request.

add_library(plenzo_compiler INTERFACE)

target_compile_options(plenzo_compiler INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wsuggest-override -Werror)

if(PLENZO_SANITIZE)
    target_compile_options(plenzo_compiler INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(plenzo_compiler INTERFACE -fsanitize=address,undefined)
endif()

if(PLENZO_FUZZ)
    target_compile_options(plenzo_compiler INTERFACE -fsanitize=fuzzer-no-link)
endif()
