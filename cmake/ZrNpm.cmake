# zr_npm_packages(folder result): installs what package-lock.json in `folder` names, below the build folder, again only when
# the file changes; `result` becomes the folder that has node_modules and, when all is there, a file `installed`.
find_program(ZR_NODE NAMES node nodejs)
find_program(ZR_NPM npm)
if(NOT ZR_NODE OR NOT ZR_NPM)
    message(FATAL_ERROR "node and npm are missing; tools/install_packages.sh build installs them")
endif()
function(zr_npm_packages folder result)
    file(RELATIVE_PATH path "${PROJECT_SOURCE_DIR}" "${folder}")
    set(packages "${CMAKE_BINARY_DIR}/npm/${path}")
    add_custom_command(OUTPUT "${packages}/installed"
        COMMAND "${PROJECT_SOURCE_DIR}/tools/install_npm_packages.sh" "${folder}" "${packages}" "${ZR_NPM}"
        DEPENDS "${folder}/package.json" "${folder}/package-lock.json" "${PROJECT_SOURCE_DIR}/tools/install_npm_packages.sh"
        COMMENT "Installing npm packages of ${path}" VERBATIM)
    set(${result} "${packages}" PARENT_SCOPE)
endfunction()
