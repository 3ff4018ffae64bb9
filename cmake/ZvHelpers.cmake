# Links the host's controls module even though nothing references it directly:
# the library only ever looks it up among the modules already loaded.
function(zv_link_controls_module target)
  if(WIN32)
    target_link_libraries(${target} PRIVATE zvCtrls)
  else()
    target_link_libraries(${target} PRIVATE -Wl,--push-state,--no-as-needed zvCtrls -Wl,--pop-state)
  endif()
endfunction()

# Links the static core into a program that needs the library's internals. The
# shared library is loaded beside it only for its string resources, which the
# host's string loader finds in the module of that name; its code is not called.
function(zv_link_core target)
  target_link_libraries(${target} PRIVATE ZvTransitionCore)
  if(WIN32)
    target_link_libraries(${target} PRIVATE ZvTransition)
  else()
    target_link_libraries(${target} PRIVATE -Wl,--push-state,--no-as-needed ZvTransition -Wl,--pop-state)
  endif()
endfunction()

# Installed, `target` (going to `install_dir` under the prefix) finds the
# project's libraries through a path relative to itself, so the tree works
# under any prefix.
function(zv_install_rpath target install_dir)
  file(RELATIVE_PATH to_libdir ${CMAKE_INSTALL_PREFIX}/${install_dir} ${CMAKE_INSTALL_FULL_LIBDIR})
  string(REGEX REPLACE "/$" "" rpath "$ORIGIN/${to_libdir}")
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "${rpath}")
endfunction()
