# Configures the build as on a Mac, to see that it can be. PACELET_MAC_TOOLS is the folder of "cc" and
# "c++", which compile for a Mac; what is only named in the build has a stand-in.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)
foreach(language C OBJC)
  set(CMAKE_${language}_COMPILER $ENV{PACELET_MAC_TOOLS}/cc)
endforeach()
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER $ENV{PACELET_MAC_TOOLS}/c++)
endforeach()
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
# The compiler brings the system's headers itself.
set(CMAKE_OSX_SYSROOT "" CACHE STRING "")
set(CMAKE_AR /usr/bin/llvm-ar)
set(CMAKE_RANLIB /usr/bin/llvm-ranlib)
set(CMAKE_INSTALL_NAME_TOOL /bin/true)
# Only to be found, not to be linked.
file(GLOB packages /usr/lib/*-linux-gnu/cmake)
set(CMAKE_PREFIX_PATH ${packages} /usr)
set(CMAKE_SIZEOF_VOID_P 8)
foreach(framework gl glu)
  set(OPENGL_${framework}_LIBRARY /System/Library/Frameworks/OpenGL.framework CACHE PATH "")
endforeach()
set(OPENGL_INCLUDE_DIR /System/Library/Frameworks/OpenGL.framework/Headers CACHE PATH "")
