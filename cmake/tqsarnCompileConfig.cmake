# One place for the language level, warnings and sanitizers; every target calls it.
function(tqsarn_compile_config target)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
    if(TQSARN_WERROR)
        target_compile_options(${target} PRIVATE -Werror)
    endif()
    if(TQSARN_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer
                                                 -fno-sanitize-recover=undefined)
        target_link_options(${target} PRIVATE -fsanitize=address,undefined)
    endif()
endfunction()
