# OpenImageIO::OpenImageIO from pkg-config's description. Debian's own CMake configuration of it also
# demands the headers of OpenCV, which nobody here needs.
if(NOT TARGET OpenImageIO::OpenImageIO)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(OPENIMAGEIO REQUIRED IMPORTED_TARGET GLOBAL OpenImageIO)
    add_library(OpenImageIO::OpenImageIO ALIAS PkgConfig::OPENIMAGEIO)
endif()
set(OpenImageIO_FOUND TRUE)
