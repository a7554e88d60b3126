# What every target of the house is built with: language, warnings, sanitizers, ccache, mold, precompiled header.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set_property(GLOBAL PROPERTY AUTOGEN_SOURCE_GROUP Generated)
# Programs are compiled as libraries are, so that all of them can share one precompiled header.
set(CMAKE_CXX_COMPILE_OPTIONS_PIE ${CMAKE_CXX_COMPILE_OPTIONS_PIC})
option(BUILD_TESTING "Build the tests" ON)
set(SORVAN_SANITIZE "" CACHE STRING "Sanitizers, joined by commas: address,undefined or thread")
option(SORVAN_COVERAGE "Instrument for coverage" OFF)
option(SORVAN_FUZZ "Build the fuzz targets with libFuzzer" OFF)
option(SORVAN_PLANTED_DRIVER "Build a second torture driver with switchable bugs; no other target ever has them" ON)
option(SORVAN_WERROR "Treat warnings as errors" ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE_PROGRAM})
endif()
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  add_link_options(-fuse-ld=mold)
endif()

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Network Widgets Svg DBus Multimedia Test)
find_package(QCoro6 REQUIRED COMPONENTS Core Network DBus)
find_package(Qt6Keychain REQUIRED)
find_package(SQLiteCpp REQUIRED)
find_package(Boost 1.81 REQUIRED)
find_package(OpenSSL REQUIRED)
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(FFMPEG REQUIRED IMPORTED_TARGET libavformat libavcodec libavutil libswscale libswresample)
pkg_check_modules(HEIF REQUIRED IMPORTED_TARGET libheif)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
if(BUILD_TESTING)
  find_package(GTest REQUIRED)
  find_package(rapidcheck REQUIRED)
endif()

# Flags for our own code. Third-party headers are system headers and stay quiet.
add_library(sorvan_house INTERFACE)
target_compile_options(sorvan_house INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wconversion -Wno-sign-conversion
  -Wno-shorten-64-to-32 -Wno-implicit-int-float-conversion -Wimplicit-fallthrough -Wunused -fno-omit-frame-pointer
  $<$<BOOL:${SORVAN_WERROR}>:-Werror>)
target_compile_definitions(sorvan_house INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_KEYWORDS
  SORVAN_VERSION="${PROJECT_VERSION}")
if(SORVAN_SANITIZE)
  add_compile_options(-fsanitize=${SORVAN_SANITIZE} -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${SORVAN_SANITIZE})
endif()
if(SORVAN_COVERAGE)
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fprofile-instr-generate -fcoverage-mapping)
endif()
if(SORVAN_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
