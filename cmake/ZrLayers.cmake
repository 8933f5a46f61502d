# An include against the layer table fails the build. The check runs again when a source or a folder changes.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(layers_stamp "${CMAKE_BINARY_DIR}/layers.checked")
add_custom_command(OUTPUT "${layers_stamp}"
    COMMAND Python3::Interpreter "${PROJECT_SOURCE_DIR}/tools/check_layers.py" --root "${PROJECT_SOURCE_DIR}"
            --stamp "${layers_stamp}" --depfile "${layers_stamp}.d"
    DEPENDS "${PROJECT_SOURCE_DIR}/tools/check_layers.py"
    DEPFILE "${layers_stamp}.d"
    COMMENT "Checking layers" VERBATIM)
add_custom_target(zr_layers ALL DEPENDS "${layers_stamp}")
