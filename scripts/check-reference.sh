#!/usr/bin/env bash
# scripts/check-reference.sh [FOLDER]
#
# Generates the reference of Interface/ into FOLDER and fails on every warning, as on an operation without
# a comment. Then takes a comment away and fails if that goes unnoticed.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-build/reference}
mkdir -p "$folder"

generate() {
    TSA_VERSION=check TSA_REFERENCE=$1 TSA_WARN_AS_ERROR=FAIL_ON_WARNINGS doxygen docs/Doxyfile 2>&1
}

generate "$folder"

proof=$folder/proof
rm -rf "$proof"
mkdir -p "$proof/docs" "$proof/output"
cp -r Interface "$proof"
cp docs/Doxyfile docs/reference.dox "$proof/docs"
sed -i '/Returns the display text of a device set/d' "$proof/Interface/TargetSelectInterfaceHandler.h"
found=$(cd "$proof" && generate output) && status=0 || status=$?
if [ "$status" -eq 0 ] || ! grep 'GetDeviceSetText.*is not documented' > /dev/null <<< "$found"; then
    printf '%s\n' "$found" "no warning although GetDeviceSetText has no comment"
    exit 1
fi
