# Makes the stubs of the Mac's C++ and Qt libraries from Debian's. Of Qt, Debian's headers and tools
# (moc, uic, rcc) serve as they are.
set(stubs ${CMAKE_BINARY_DIR}/stubs)
set(libraries /usr/lib/x86_64-linux-gnu)
file(MAKE_DIRECTORY ${stubs})

function(make_stub name install_name)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ARGN})
  execute_process(
    COMMAND ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/make_stub ${install_name} ${ARGN}
    OUTPUT_FILE ${stubs}/${name}.tbd
    COMMAND_ERROR_IS_FATAL ANY)
endfunction()

make_stub(libc++ /usr/lib/libc++.1.dylib ${libraries}/libc++.so.1 ${libraries}/libc++abi.so.1)

# Qt 6's widgets want this target, but nothing calls OpenGL, so nothing is linked for it.
add_library(WrapOpenGL::WrapOpenGL INTERFACE IMPORTED GLOBAL)
list(APPEND CMAKE_PREFIX_PATH ${libraries}/cmake)
find_package(Qt${QT_MAJOR} ${QT_OLDEST} REQUIRED COMPONENTS Widgets Concurrent Test)
# The version in the path of Qt's frameworks.
set(qt_version_5 5)
set(qt_version_6 A)
set(qt_version ${qt_version_${QT_MAJOR}})
foreach(module Core Gui Widgets Concurrent Test)
  make_stub(Qt${module} @rpath/Qt${module}.framework/Versions/${qt_version}/Qt${module}
            ${libraries}/libQt${QT_MAJOR}${module}.so.${QT_MAJOR})
  set_target_properties(
    Qt${QT_MAJOR}::${module} PROPERTIES IMPORTED_CONFIGURATIONS RELEASE
                                        IMPORTED_LOCATION_RELEASE ${stubs}/Qt${module}.tbd)
endforeach()

add_subdirectory(${CMAKE_CURRENT_LIST_DIR}/onecall onecall)
