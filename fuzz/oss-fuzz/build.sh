#!/bin/bash -eu
# SPDX-License-Identifier: MIT
#
# Builds the fuzz targets as OSS-Fuzz wants them: compiled with $CC, $CXX and $CXXFLAGS, linked with
# $LIB_FUZZING_ENGINE, and put into $OUT, each with its corpus and its dictionary. Targets may be
# named; otherwise all of fuzz/targets.tsv are built. It is run in the folder of the sources, as the
# Dockerfile beside it sets it.

work=${WORK:-build}/oss-fuzz
targets=("$@")
if ((${#targets[@]} == 0)); then
    mapfile -t targets < <(grep -v '^#' fuzz/targets.tsv | cut -f 1)
fi

# Where the targets run there are no libraries but those of C and C++. minizip wants the last two.
library() { "$CXX" -print-file-name="$1"; }
cmake -S . -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG= \
    -DESPALIER_BUILD_FUZZERS=ON -DESPALIER_BUILD_TESTS=OFF -DESPALIER_BUILD_TOOLS=OFF \
    -DESPALIER_BUILD_EXAMPLES=OFF -DESPALIER_INSTALL=OFF -DESPALIER_FUZZING_ENGINE="$LIB_FUZZING_ENGINE" \
    -DZLIB_LIBRARY="$(library libz.a)" -DMinizip_LIBRARY="$(library libminizip.a)" \
    -DEXPAT_LIBRARY="$(library libexpat.a)" \
    -DCMAKE_CXX_STANDARD_LIBRARIES="$(library libz.a) $(library libbz2.a)"
cmake --build "$work" --target "${targets[@]/#/espalier_fuzz_}"

for target in "${targets[@]}"; do
    IFS=$'\t' read -r _ corpus dictionary < <(grep "^$target"$'\t' fuzz/targets.tsv)
    cp "$work/fuzz/$target" "$OUT/"
    cp "fuzz/dictionaries/$dictionary" "$OUT/$target.dict"
    rm -f "$OUT/${target}_seed_corpus.zip"
    zip -q -j "$OUT/${target}_seed_corpus.zip" "fuzz/corpus/$corpus"/*
done
