# Defines OpenImageIO::OpenImageIO from pkg-config's data. Debian's CMake configuration of it also
# requires the OpenCV headers, which this project does not need.
if(NOT TARGET OpenImageIO::OpenImageIO)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(OPENIMAGEIO REQUIRED IMPORTED_TARGET GLOBAL OpenImageIO)
    add_library(OpenImageIO::OpenImageIO ALIAS PkgConfig::OPENIMAGEIO)
endif()
set(OpenImageIO_FOUND TRUE)
