# What every target of the project shares.

add_library(kova_options INTERFACE)
target_compile_options(kova_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion
                                              -Werror)
target_compile_definitions(
    kova_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH
                           QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(KOVA_SANITIZE)
    target_compile_options(kova_options INTERFACE -fsanitize=${KOVA_SANITIZE} -fno-omit-frame-pointer
                                                  -fno-sanitize-recover=all)
    # An empty std::optional that is read is not caught by a sanitizer: what it held last still lies there.
    target_compile_definitions(kova_options INTERFACE _GLIBCXX_ASSERTIONS)
    target_link_options(kova_options INTERFACE -fsanitize=${KOVA_SANITIZE})
endif()

# One floor of the house: a static library that sees the headers of the floors that it names, and no others.
function(kova_floor name)
    cmake_parse_arguments(arg "" "" "SOURCES;USES" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE kova_options)
endfunction()
