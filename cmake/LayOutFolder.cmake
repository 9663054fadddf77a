# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Fills an application folder. ASSETS: folder of the assets; FOLDER: the folder to fill. Users' files are in the same
# folders, so existing files stay unchanged, except the help pages, which belong to the program. No database is
# included: the program creates one if there never was one, and unpacking an archive again overwrites none. A text in each
# folder that is otherwise empty keeps it where only files are stored, as in version control.
foreach(name db db_backup txt rec wav htm)
    file(MAKE_DIRECTORY "${FOLDER}/${name}")
endforeach()

foreach(pattern "KeywordList.txt" "db/*.txt" "db_backup/*.txt" "rec/*.txt" "txt/*.txt" "txt/*.png" "wav/*.wav")
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
