# Fills an application folder. ASSETS: folder of the assets; FOLDER: the folder to fill; SQLITE3_SHELL: the sqlite3
# command. A learner's files live in the same folders: what is already there stays as it is, except the help pages,
# which belong to the program.
foreach(name db db_backup txt rec wav htm)
    file(MAKE_DIRECTORY "${FOLDER}/${name}")
endforeach()

foreach(pattern "KeywordList.txt" "txt/*.txt" "txt/*.png" "wav/*.wav")
    file(GLOB assets RELATIVE "${ASSETS}" "${ASSETS}/${pattern}")
    foreach(asset IN LISTS assets)
        if(NOT EXISTS "${FOLDER}/${asset}")
            file(COPY_FILE "${ASSETS}/${asset}" "${FOLDER}/${asset}")
        endif()
    endforeach()
endforeach()

file(GLOB pages "${ASSETS}/htm/*")
if(pages)
    file(COPY ${pages} DESTINATION "${FOLDER}/htm")
endif()

# Made beside its place and renamed, so that a build that is interrupted leaves no database without its table.
set(database "${FOLDER}/db/kotoban.splite3")
if(NOT EXISTS "${database}")
    file(REMOVE "${database}.new")
    execute_process(COMMAND "${SQLITE3_SHELL}" -bail "${database}.new" INPUT_FILE "${ASSETS}/db/schema.sql"
        COMMAND_ERROR_IS_FATAL ANY)
    file(RENAME "${database}.new" "${database}")
endif()
