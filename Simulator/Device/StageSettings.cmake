# What belongs to the person who uses the device once it is there: the settings, which are never
# replaced, and some litter to begin with.
#
# cmake -DSETTINGS=FILE -DSTAGED=FILE -DLITTER=PROGRAM -DDEVICE=FOLDER -P StageSettings.cmake

if(NOT EXISTS ${STAGED})
    execute_process(COMMAND ${LITTER} ${DEVICE} 150 OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    configure_file(${SETTINGS} ${STAGED} COPYONLY)
endif()
