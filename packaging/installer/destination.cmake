# Read by cpack for each installer: the package installs the application into the folder in which it
# looks for its own scripts, as a component; the disk image holds the application at its top, and
# its own name has no component's in it.
if(CPACK_GENERATOR STREQUAL "productbuild")
  set(CPACK_PACKAGING_INSTALL_PREFIX /Applications/Utilities/Morvanta)
  set(CPACK_MONOLITHIC_INSTALL OFF)
else()
  set(CPACK_MONOLITHIC_INSTALL ON)
endif()
