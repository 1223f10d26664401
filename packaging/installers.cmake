# The installers, which "cpack" makes on a Mac: a disk image and an installer package.
set(ASSISTANT_SIGNING_IDENTITY - CACHE STRING
    "Signs the application: a \"Developer ID Application\" identity, or - to run on this Mac only")
set(ASSISTANT_INSTALLER_IDENTITY "" CACHE STRING
    "Signs the installer package: a \"Developer ID Installer\" identity, or nothing")

get_target_property(qmake Qt::qmake LOCATION)
get_filename_component(qt_tools ${qmake} DIRECTORY)
unset(MACDEPLOYQT CACHE) # may have been found for the other Qt
find_program(MACDEPLOYQT macdeployqt HINTS ${qt_tools})
install(DIRECTORY "${bundle}" DESTINATION . COMPONENT application USE_SOURCE_PERMISSIONS)
configure_file(installer/deploy.cmake.in deploy.cmake @ONLY)
install(SCRIPT ${CMAKE_CURRENT_BINARY_DIR}/deploy.cmake COMPONENT application)

set(CPACK_GENERATOR DragNDrop productbuild)
set(CPACK_PACKAGE_NAME "${ASSISTANT_NAME}")
set(CPACK_PACKAGE_VENDOR Morvanta)
set(CPACK_PACKAGE_FILE_NAME "Morvanta-Join-Assistant-${PROJECT_VERSION}")
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_SOURCE_DIR}/installer/destination.cmake)

# The assistant works from one folder only, which the image's usual link to /Applications isn't.
set(CPACK_DMG_DISABLE_APPLICATIONS_SYMLINK ON)
# Newer macOS has no tool any more for a licence inside a disk image.
set(CPACK_DMG_SLA_USE_RESOURCE_FILE_LICENSE OFF)

file(CONFIGURE OUTPUT license.txt CONTENT "@ASSISTANT_COPYRIGHT@\n" @ONLY)
set(CPACK_RESOURCE_FILE_WELCOME ${CMAKE_CURRENT_SOURCE_DIR}/installer/welcome.txt)
set(CPACK_RESOURCE_FILE_README ${CMAKE_CURRENT_SOURCE_DIR}/installer/readme.txt)
set(CPACK_RESOURCE_FILE_LICENSE ${CMAKE_CURRENT_BINARY_DIR}/license.txt)
set(CPACK_PRODUCTBUILD_IDENTIFIER com.morvanta.joinassistant)
set(CPACK_PRODUCTBUILD_IDENTITY_NAME "${ASSISTANT_INSTALLER_IDENTITY}")
# The package would be empty without a component.
set(CPACK_COMPONENTS_ALL application)
set(CPACK_COMPONENT_APPLICATION_DISPLAY_NAME "${ASSISTANT_NAME}")
set(CPACK_COMPONENT_APPLICATION_REQUIRED ON)
# By default the Installer would update a copy of the application that it finds elsewhere on the disk, and
# leave the folder empty from which the assistant runs its scripts.
set(CPACK_COMPONENT_APPLICATION_PLIST ${CMAKE_CURRENT_SOURCE_DIR}/installer/component.plist)
include(CPack)
