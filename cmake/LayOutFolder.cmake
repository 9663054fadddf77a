# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Fills an application folder. ASSETS: folder of the assets; FOLDER: the folder to fill. A learner's files live in the
# same folders: what is already there stays as it is, except the help pages, which belong to the program. There is no
# database in it: the program makes one where none ever was, and an archive that is unpacked again replaces none.
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
