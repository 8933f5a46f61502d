# zr_messages(target folder): compiles the message catalogues of a folder (one text file a language) for the program that
# reads them at run time; `target` stands for them.
find_program(ZR_GENRB genrb REQUIRED)
function(zr_messages target folder)
    set(source "${CMAKE_CURRENT_SOURCE_DIR}/messages/${folder}")
    set(bundle_folder "${CMAKE_BINARY_DIR}/share/zrsheet/messages/${folder}")
    foreach(language root en de fr es ja)
        add_custom_command(OUTPUT "${bundle_folder}/${language}.res"
            COMMAND "${CMAKE_COMMAND}" -E make_directory "${bundle_folder}"
            COMMAND "${ZR_GENRB}" --quiet --encoding UTF-8 --destdir "${bundle_folder}" "${source}/${language}.txt"
            DEPENDS "${source}/${language}.txt" VERBATIM)
        list(APPEND bundles "${bundle_folder}/${language}.res")
    endforeach()
    add_custom_target(${target} ALL DEPENDS ${bundles})
endfunction()
