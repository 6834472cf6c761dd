# Driven by the packaging tests of tests/CMakeLists.txt (cmake -P).
#
# MODE=install: installs the build BUILD_DIR into PREFIX (emptied first) and
#   checks that every public header is there: include/morvane.h, every header
#   of frame/ and frequencystore/, and every generated record header listed in
#   GENERATED_HEADERS_FILE.
# MODE=consume: configures, builds and runs the consumer project in WORK_DIR
#   (emptied first) against the package in PREFIX (PACKAGE=prefix) or the
#   build tree BUILD_DIR (PACKAGE=build-tree), with the main build's
#   GENERATOR, MAKE_PROGRAM, CXX_COMPILER, CONFIG, QT_MAJOR and QT_DIR.

cmake_minimum_required(VERSION 3.16)

function(fail)
  string(JOIN "" text ${ARGN})
  message(FATAL_ERROR "${text}")
endfunction()

function(run)
  string(JOIN " " shown ${ARGN})
  message(STATUS "> ${shown}")
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    fail("failed (${result}): ${shown}")
  endif()
endfunction()

foreach(var IN ITEMS MODE BUILD_DIR)
  if(NOT DEFINED ${var} OR "${${var}}" STREQUAL "")
    fail("run.cmake needs -D${var}=...")
  endif()
endforeach()

if(MODE STREQUAL "install")
  if(NOT PREFIX OR NOT SOURCE_DIR OR NOT INCLUDEDIR OR NOT GENERATED_HEADERS_FILE)
    fail("install needs PREFIX, SOURCE_DIR, INCLUDEDIR and GENERATED_HEADERS_FILE")
  endif()
  file(REMOVE_RECURSE "${PREFIX}")
  set(config_args)
  if(CONFIG)
    set(config_args --config "${CONFIG}")
  endif()
  run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${PREFIX}" ${config_args})

  set(include_dir "${PREFIX}/${INCLUDEDIR}")
  set(expected "${include_dir}/morvane.h")
  file(GLOB source_headers RELATIVE "${SOURCE_DIR}"
    "${SOURCE_DIR}/frame/*.h" "${SOURCE_DIR}/frequencystore/*.h")
  # Headers named *_p.h are the library's private ones and stay uninstalled.
  list(FILTER source_headers EXCLUDE REGEX "_p\\.h$")
  file(STRINGS "${GENERATED_HEADERS_FILE}" generated_headers)
  if(NOT generated_headers)
    fail("no generated record headers listed in ${GENERATED_HEADERS_FILE}")
  endif()
  foreach(header IN LISTS source_headers generated_headers)
    list(APPEND expected "${include_dir}/morvane/${header}")
  endforeach()
  set(missing)
  foreach(file IN LISTS expected)
    if(NOT EXISTS "${file}")
      list(APPEND missing "${file}")
    endif()
  endforeach()
  if(missing)
    string(REPLACE ";" "\n  " missing "${missing}")
    fail("not installed:\n  ${missing}")
  endif()
  list(LENGTH expected count)
  message(STATUS "all ${count} public headers installed under ${include_dir}")

elseif(MODE STREQUAL "consume")
  if(NOT WORK_DIR OR NOT GENERATOR OR NOT PACKAGE)
    fail("consume needs WORK_DIR, GENERATOR and PACKAGE")
  endif()
  if(PACKAGE STREQUAL "prefix")
    if(NOT PREFIX)
      fail("PACKAGE=prefix needs PREFIX")
    endif()
    set(package_args "-DCMAKE_PREFIX_PATH=${PREFIX}")
    set(expected_dir "${PREFIX}/")
  elseif(PACKAGE STREQUAL "build-tree")
    set(package_args "-DMorvane_DIR=${BUILD_DIR}")
    set(expected_dir "${BUILD_DIR}")
  else()
    fail("PACKAGE must be prefix or build-tree, not ${PACKAGE}")
  endif()

  set(options
    -G "${GENERATOR}"
    ${package_args}
    -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF
    -DCMAKE_FIND_USE_SYSTEM_PACKAGE_REGISTRY=OFF)
  if(MAKE_PROGRAM)
    list(APPEND options "-DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM}")
  endif()
  if(CXX_COMPILER)
    list(APPEND options "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}")
  endif()
  if(CONFIG)
    list(APPEND options "-DCMAKE_BUILD_TYPE=${CONFIG}")
  endif()
  if(QT_MAJOR)
    list(APPEND options "-DMORVANE_QT_MAJOR=${QT_MAJOR}")
    if(QT_DIR)
      list(APPEND options "-DQt${QT_MAJOR}_DIR=${QT_DIR}")
    endif()
  endif()

  get_filename_component(source "${CMAKE_CURRENT_LIST_DIR}" ABSOLUTE)
  file(REMOVE_RECURSE "${WORK_DIR}")
  run("${CMAKE_COMMAND}" -S "${source}" -B "${WORK_DIR}" ${options})

  # The package must come from where it was asked for, not from elsewhere on
  # the machine.
  file(STRINGS "${WORK_DIR}/CMakeCache.txt" found REGEX "^Morvane_DIR:")
  string(REGEX REPLACE "^Morvane_DIR:[A-Z]+=" "" found "${found}")
  get_filename_component(found "${found}" REALPATH)
  get_filename_component(expected_real "${expected_dir}" REALPATH)
  string(FIND "${found}/" "${expected_real}/" at)
  if(NOT at EQUAL 0)
    fail("Morvane found in ${found}, expected below ${expected_dir}")
  endif()

  set(config_args)
  if(CONFIG)
    set(config_args --config "${CONFIG}")
  endif()
  run("${CMAKE_COMMAND}" --build "${WORK_DIR}" ${config_args})

  set(program "${WORK_DIR}/morvane_consumer")
  if(CONFIG AND EXISTS "${WORK_DIR}/${CONFIG}/morvane_consumer")
    set(program "${WORK_DIR}/${CONFIG}/morvane_consumer")
  endif()
  run("${program}")

else()
  fail("MODE must be install or consume, not ${MODE}")
endif()
