# zr_open_cascade: the CAD kernel with its readers of exchange files. Its own package file asks for parts that
# nothing here uses, a window system among them; hence its libraries are looked for one by one.
find_path(ZR_OPEN_CASCADE_INCLUDES STEPCAFControl_Reader.hxx PATH_SUFFIXES opencascade REQUIRED)
add_library(zr_open_cascade INTERFACE)
target_include_directories(zr_open_cascade SYSTEM INTERFACE "${ZR_OPEN_CASCADE_INCLUDES}")
# Without it a signal inside the kernel cannot become an exception here.
target_compile_definitions(zr_open_cascade INTERFACE OCC_CONVERT_SIGNALS)
foreach(library TKXDEIGES TKXDESTEP TKIGES TKSTEP TKSTEPAttr TKSTEPBase TKXSBase TKXCAF TKCAF TKLCAF TKCDF TKMesh TKShHealing
                TKTopAlgo TKBRep TKGeomBase TKG3d TKG2d TKMath TKernel)
    find_library(ZR_${library} ${library} REQUIRED)
    target_link_libraries(zr_open_cascade INTERFACE "${ZR_${library}}")
endforeach()
