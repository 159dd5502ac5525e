# Embeds text files as constants, so that GLSL stays in files of its own.
#
#   embed_text(HEADER Name.h NAMESPACE A::B FILES dir/One.glsl dir/Two.glsl)
#
# makes a header Name.h, included by the path of the calling folder, with one std::string_view for
# each file, kOne and kTwo, which holds the file's bytes unchanged.
function(embed_text)
    cmake_parse_arguments(ARG "" "HEADER;NAMESPACE" "FILES" ${ARGN})
    set(constants "")
    foreach(file IN LISTS ARG_FILES)
        file(READ ${file} text)
        get_filename_component(name ${file} NAME_WE)
        string(APPEND constants
               "inline constexpr std::string_view k${name} = R\"text(${text})text\";\n\n")
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    endforeach()
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    set(directory ${PROJECT_BINARY_DIR}/Generated/${folder})
    file(CONFIGURE OUTPUT ${directory}/${ARG_HEADER} @ONLY CONTENT
"#pragma once

#include <string_view>

namespace @ARG_NAMESPACE@ {

@constants@} // namespace @ARG_NAMESPACE@
")
endfunction()
