# Compiles each class of this folder anew when its form has changed: the generated header, which
# appears while the build runs, comes too late for Ninja to see that it is newer.
function(depend_on_forms)
  file(GLOB forms CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.ui")
  foreach(form IN LISTS forms)
    get_filename_component(name "${form}" NAME_WE)
    set_property(SOURCE ${name}.cpp APPEND PROPERTY OBJECT_DEPENDS "${form}")
  endforeach()
endfunction()
