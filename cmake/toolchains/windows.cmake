# Builds for 64-bit Windows on Debian, with GCC for mingw-w64 and the libraries of the kit, which ./package windows-kit
# makes. The variable ZOMREL_WINDOWS_KIT, or the environment variable of this name, is the kit's folder.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(triple x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

if(NOT ZOMREL_WINDOWS_KIT)
  set(ZOMREL_WINDOWS_KIT $ENV{ZOMREL_WINDOWS_KIT})
endif()
set(ZOMREL_WINDOWS_KIT ${ZOMREL_WINDOWS_KIT} CACHE PATH "Folder of the libraries for Windows")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES ZOMREL_WINDOWS_KIT)

# Programs that run during the build are Linux programs. Everything else is found in the kit or in Debian's folder for
# this target, never among the libraries of the building machine.
set(CMAKE_FIND_ROOT_PATH ${ZOMREL_WINDOWS_KIT} /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} ${ZOMREL_WINDOWS_KIT}/lib/pkgconfig)
set(ENV{PKG_CONFIG_PATH})

# Qt's own tools (moc, rcc) are those of the building machine.
set(QT_HOST_PATH /usr CACHE PATH "Folder of the Qt that runs here")
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake CACHE PATH "Folder of its CMake packages")
