# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# The project's addresses, here only. Those at example.org are placeholders, to be replaced before a release.

# Serves the repository, including the pictures that software centres show.
set(PACKAGE_HOMEPAGE "https://kotoban.example.org")
# Also for reports of security bugs.
set(PACKAGE_CONTACT "Kotoban developers <kotoban@example.org>")
