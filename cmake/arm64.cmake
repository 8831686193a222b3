# Toolchain for 64-bit Arm: Debian's cross compiler with the libraries of the foreign architecture.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig)
# Qt's code generators run on the build machine.
set(QT_HOST_PATH /usr)
file(GLOB QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)
