#pragma once

#include "tests/fuzz/Require.h"
#include "tests/model/fakes/SessionWorld.h"

namespace tamarind {

// A world with the usual files and one more, all of them older than files that are read again for
// each text.
struct FuzzWorld : SessionWorld {
    FuzzWorld(const std::string& wincmd, const std::string& path, const std::string& bytes) {
        PutUsualFiles(wincmd);
        disk.Put(path, bytes);
        disk.Wait(10);
    }
};

}  // namespace tamarind
