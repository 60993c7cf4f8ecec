# Runs qmllint on every .qml file under SOURCE_DIR with the QML modules in IMPORT_PATH.
# qmllint exits non-zero on any message of level "warning" (every category but the
# informational ones, as qmllint ships them), so a new warning fails the test.
file(GLOB_RECURSE files "${SOURCE_DIR}/*.qml")
if(NOT files)
    message(FATAL_ERROR "no QML files under ${SOURCE_DIR}")
endif()
execute_process(COMMAND "${QMLLINT}" -I "${IMPORT_PATH}" ${files} RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "qmllint found problems (status ${status})")
endif()
list(LENGTH files count)
message(STATUS "qmllint: ${count} files clean")
