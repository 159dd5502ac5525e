# Defines FFmpeg::FFmpeg from pkg-config's data.
if(NOT TARGET FFmpeg::FFmpeg)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(FFMPEG REQUIRED IMPORTED_TARGET GLOBAL
                      libavformat libavcodec libswscale libswresample libavutil)
    add_library(FFmpeg::FFmpeg ALIAS PkgConfig::FFMPEG)
endif()
set(FFmpeg_FOUND TRUE)
