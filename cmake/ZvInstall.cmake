# What `cmake --install` puts under the prefix: the library and the host
# modules it runs with (component libs), the headers of its interface, a CMake
# package (ZvTransition::ZvTransition) and a pkg-config file (component dev).
# zvtran (cli) and the MLT module (mlt) install from their folders.
include(CMakePackageConfigHelpers)

set(ZV_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZvTransition)
set(ZV_HEADER_DIR ${CMAKE_INSTALL_INCLUDEDIR}/zvtransition)

set(ZV_INSTALLED_LIBRARIES ZvTransition zorvan zvCtrls zvSuppt)
install(TARGETS ${ZV_INSTALLED_LIBRARIES} EXPORT ZvTransitionTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT libs
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libs NAMELINK_COMPONENT dev
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)

# The interface the README documents, with the headers it includes.
set(ZV_PUBLIC_HEADERS
  frame/abi.h frame/zv_transition.h frame/transition_op.h frame/plane.h
  imaging/yuv_rgb.h imaging/image_resize.h imaging/fit_overlap.h
  gl/gl_release.h
  host/host_api.h host/transition_abi.h host/image.h host/transition_registry.h host/string_loader.h
  host/new_dib.h host/bitmap_header.h)
if(NOT WIN32)
  list(APPEND ZV_PUBLIC_HEADERS effects3d/zv_gl_collection.h)  # the GLSL collection is not in the Windows build
endif()
foreach(header ${ZV_PUBLIC_HEADERS})
  get_filename_component(folder ${header} DIRECTORY)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${ZV_HEADER_DIR}/${folder} COMPONENT dev)
endforeach()

install(EXPORT ZvTransitionTargets NAMESPACE ZvTransition:: DESTINATION ${ZV_CMAKE_DIR} COMPONENT dev)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/ZvTransitionConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZvTransitionConfig.cmake INSTALL_DESTINATION ${ZV_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZvTransitionConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZvTransitionConfig.cmake
  ${PROJECT_BINARY_DIR}/ZvTransitionConfigVersion.cmake DESTINATION ${ZV_CMAKE_DIR} COMPONENT dev)

# The pkg-config file finds the prefix from its own place, so the tree may be
# installed under any prefix (`cmake --install build --prefix DIR`).
set(ZV_PC_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH ZV_PC_TO_PREFIX /root/${ZV_PC_DIR} /root)
string(REGEX REPLACE "/$" "" ZV_PC_TO_PREFIX "${ZV_PC_TO_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/zvtransition.pc.in ${PROJECT_BINARY_DIR}/zvtransition.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zvtransition.pc DESTINATION ${ZV_PC_DIR} COMPONENT dev)
