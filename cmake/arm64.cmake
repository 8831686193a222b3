# The cross compiler for 64-bit Arm, and its libraries beside the machine's own, where Debian puts both.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
set(ENV{PKG_CONFIG_LIBDIR} /usr/lib/aarch64-linux-gnu/pkgconfig:/usr/share/pkgconfig)
# Qt's own tools run here.
set(QT_HOST_PATH /usr)
file(GLOB QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)
