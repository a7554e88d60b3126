# A room is one folder: a static library `sorvan_<name>`, a namespace, and a test folder `tests/<name>`. Rooms are
# declared in their one order; each links every room before it, and none after it.
set_property(GLOBAL PROPERTY SORVAN_ROOMS "")

# sorvan_precompiled(TARGET): the target includes the one precompiled header. It is built once, with the first room; every
# other target takes that room's. That asks for the same position-independent code everywhere (see house.cmake).
function(sorvan_precompiled target)
  if(target STREQUAL "sorvan_base")
    target_precompile_headers(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/precompiled.h)
  else()
    target_precompile_headers(${target} REUSE_FROM sorvan_base)
  endif()
endfunction()

# sorvan_room(NAME [FOLDER path]): declares the room in src/NAME, or in src/<path>.
# Its sources are whatever stands in the folder itself; sub-folders are rooms of their own.
function(sorvan_room name)
  cmake_parse_arguments(ARG "" "FOLDER;AFTER" "" ${ARGN})
  set(folder ${name})
  if(ARG_FOLDER)
    set(folder ${ARG_FOLDER})
  endif()
  if(name STREQUAL "app")
    return() # the composition root is a program: src/app/CMakeLists.txt
  endif()
  get_property(before GLOBAL PROPERTY SORVAN_ROOMS)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.h)
  file(GLOB resources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${folder}/*.qrc)
  if(NOT sources)
    set(sources ${CMAKE_SOURCE_DIR}/cmake/empty_room.cpp)
  endif()
  set(library sorvan_${name})
  add_library(${library} STATIC ${sources} ${headers} ${resources})
  target_include_directories(${library} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  list(REVERSE before) # static libraries: users stand before what they use
  target_link_libraries(${library} PUBLIC ${before} PRIVATE sorvan_house)
  target_link_libraries(${library} PUBLIC Qt6::Core Qt6::Gui Qt6::Network QCoro6::Core QCoro6::Network Boost::headers
                                          Threads::Threads)
  if(name STREQUAL "platform")
    target_link_libraries(${library} PUBLIC SQLiteCpp PkgConfig::SQLITE PRIVATE PkgConfig::FFMPEG PkgConfig::HEIF
                                            Qt6Keychain::Qt6Keychain Qt6::DBus Qt6::Multimedia OpenSSL::Crypto)
  elseif(name STREQUAL "base")
    target_link_libraries(${library} PRIVATE OpenSSL::Crypto)
  elseif(name STREQUAL "views")
    target_link_libraries(${library} PUBLIC Qt6::Widgets Qt6::Svg Qt6::DBus)
  endif()
  sorvan_precompiled(${library})
  set_property(GLOBAL APPEND PROPERTY SORVAN_ROOMS ${library})
endfunction()

# sorvan_tests(NAME [LABEL label] [PROCESSORS n] [LIBRARIES …]): one test program from tests/<NAME>/*.cpp; every case
# is a ctest test of its own under the label.
function(sorvan_tests name)
  cmake_parse_arguments(ARG "" "LABEL;PROCESSORS;TIMEOUT" "LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${name}/*.cpp)
  if(NOT sources)
    return()
  endif()
  set(label ${name})
  if(ARG_LABEL)
    set(label ${ARG_LABEL})
  endif()
  set(timeout 60)
  if(ARG_TIMEOUT)
    set(timeout ${ARG_TIMEOUT})
  endif()
  set(processors 1)
  if(ARG_PROCESSORS)
    set(processors ${ARG_PROCESSORS})
  endif()
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE sorvan_test_support ${ARG_LIBRARIES} sorvan_house GTest::gtest GTest::gmock
                                              rapidcheck Qt6::Test)
  target_include_directories(${name}_tests PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${name}_tests PRIVATE SORVAN_TEST_DATA="${CMAKE_SOURCE_DIR}/tests/data")
  target_compile_options(${name}_tests PRIVATE -Wno-conversion)
  sorvan_precompiled(${name}_tests)
  gtest_discover_tests(${name}_tests TEST_PREFIX "${label}." DISCOVERY_TIMEOUT 60
                       PROPERTIES LABELS ${label} TIMEOUT ${timeout} PROCESSORS ${processors} ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
endfunction()
