# Read by cpack for each installer: the package installs where the assistant looks for its scripts;
# the disk image holds the application at its top.
if(CPACK_GENERATOR STREQUAL "productbuild")
  set(CPACK_PACKAGING_INSTALL_PREFIX /Applications/Utilities/Morvanta)
endif()
