#!/bin/sh
# Runs cppcheck and prints only its findings. Missing includes of Qt and of the system are ignored.
set -eu
cd "$(dirname "$0")/.."
exec cppcheck --quiet --error-exitcode=1 --std=c++20 --language=c++ --library=qt --library=cmake/cppcheck.cfg \
  --inline-suppr --enable=warning,performance,portability --suppress=missingIncludeSystem \
  --suppressions-list=cmake/cppcheck-suppressions.txt -j "$(nproc)" -I src -I . src tools
