# Embeds text files as constants, so that programs for the GPU are kept as files of their own.
#
#   embed_text(TARGET target HEADER Name.h NAMESPACE A::B FILES dir/One.glsl dir/Two.glsl)
#
# gives `target` a private header Name.h with one std::string_view for each file, kOne and kTwo,
# which hold the files' bytes as they are.
function(embed_text)
    cmake_parse_arguments(ARG "" "TARGET;HEADER;NAMESPACE" "FILES" ${ARGN})
    set(constants "")
    foreach(file IN LISTS ARG_FILES)
        file(READ ${file} text)
        get_filename_component(name ${file} NAME_WE)
        string(APPEND constants
               "inline constexpr std::string_view k${name} = R\"text(${text})text\";\n\n")
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    endforeach()
    set(directory ${CMAKE_CURRENT_BINARY_DIR}/embedded)
    file(CONFIGURE OUTPUT ${directory}/${ARG_HEADER} @ONLY CONTENT
"#pragma once

#include <string_view>

namespace @ARG_NAMESPACE@ {

@constants@} // namespace @ARG_NAMESPACE@
")
    target_include_directories(${ARG_TARGET} PRIVATE ${directory})
endfunction()
