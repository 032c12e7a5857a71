#!/bin/sh
# Static analysis with cppcheck; silent where nothing is found. Missing includes are Qt's and the
# system's own.
set -eu
cd "$(dirname "$0")/.."
exec cppcheck --quiet --error-exitcode=1 --std=c++20 --language=c++ --library=qt --inline-suppr \
  --enable=warning,performance,portability --suppress=missingIncludeSystem \
  --suppressions-list=cmake/cppcheck-suppressions.txt -j "$(nproc)" -I src -I . src tools
