# What every target of the project is compiled with.

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE}")
endif()

add_library(borvane_options INTERFACE)
target_compile_options(borvane_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)

# Where files are compiled together, a local name may be that of another file's constant, and to GCC a file's own types are those of a
# header.
target_compile_options(borvane_options INTERFACE $<$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>:-Wno-shadow>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(borvane_options INTERFACE $<$<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>:-Wno-subobject-linkage>)
endif()

# GCC 12 sees overlapping copies in every `"text" + std::string` of an optimised build.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  target_compile_options(borvane_options INTERFACE -Wno-restrict)
endif()

# The core computes in single and double precision and shows the results as text. A fused multiply-add rounds once where
# the program rounds twice, so the same build would show other digits on another processor. For the same reason no target
# ever uses -ffast-math.
target_compile_options(borvane_options INTERFACE -ffp-contract=off)

if(BORVANE_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # This check reads an object through a pipe. In a process that may open no more files, as the mirror is in some tests,
  # it takes every good object for a bad one.
  add_compile_options(-fno-sanitize=vptr)
endif()

# Gives the object library TARGET its sources: all .cpp files of the named folders of the current directory. A header with a
# .cpp file of its name is the first one that this file includes, and so is compiled alone with it. The others form a header
# set, so that each can be proved to compile alone.
function(borvane_folders target)
  set(sources "")
  set(headers "")
  foreach(folder IN LISTS ARGN)
    file(GLOB folder_sources CONFIGURE_DEPENDS "${folder}/*.cpp")
    file(GLOB folder_headers CONFIGURE_DEPENDS "${folder}/*.h")
    list(APPEND sources ${folder_sources})
    foreach(header IN LISTS folder_headers)
      string(REGEX REPLACE "h$" "cpp" source "${header}")
      if(NOT EXISTS "${source}")
        list(APPEND headers "${header}")
      endif()
    endforeach()
  endforeach()
  target_sources(${target} PRIVATE ${sources}
    PUBLIC FILE_SET HEADERS BASE_DIRS "${CMAKE_CURRENT_SOURCE_DIR}" FILES ${headers})
endfunction()
