# Options and functions that all targets share.

add_library(kova_options INTERFACE)
target_compile_options(kova_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion)
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The sources are included, so GCC takes their anonymous namespaces for those of a header.
    target_compile_options(kova_options INTERFACE -Wno-subobject-linkage)
endif()
target_compile_definitions(
    kova_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_FOREACH
                           QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(KOVA_SANITIZE)
    target_compile_options(kova_options INTERFACE -fsanitize=${KOVA_SANITIZE} -fno-omit-frame-pointer
                                                  -fno-sanitize-recover=all)
    # Sanitizers do not detect access to an empty std::optional, since its storage stays valid; the assertions of
    # libstdc++ do.
    target_compile_definitions(kova_options INTERFACE _GLIBCXX_ASSERTIONS)
    target_link_options(kova_options INTERFACE -fsanitize=${KOVA_SANITIZE})
endif()

# Adds a layer: a static library that can include the headers of the layers in USES, and no others. Libraries in PRIVATE
# are used by its sources only.
function(kova_layer name)
    cmake_parse_arguments(arg "" "" "SOURCES;USES;PRIVATE" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE ${arg_PRIVATE} kova_options)
endfunction()
