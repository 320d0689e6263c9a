#!/usr/bin/env bash
# scripts/format.sh
#
# Lays out every C++ source as .clang-format says, and names those that it changes.
exec "$(dirname "$0")/check-format.sh" --fix
