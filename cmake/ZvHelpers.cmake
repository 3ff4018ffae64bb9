# Links the host's controls module even though nothing references it directly:
# the library only ever looks it up among the modules already loaded.
function(zv_link_controls_module target)
  if(WIN32)
    target_link_libraries(${target} PRIVATE zvCtrls)
  else()
    target_link_libraries(${target} PRIVATE -Wl,--no-as-needed zvCtrls -Wl,--as-needed)
  endif()
endfunction()
