#pragma once

#include <functional>

namespace porvane::test {

// Runs check in a forked child and returns its verdict: false also when the child hung past the alarm or
// crashed. With withoutRoot, a child of root first becomes the user nobody, so that file permissions hold for
// it as they do for a desk (a child of any other user has no rights to give up); the files it needs must be
// open to other users (TempDataFolder::openToOtherUsers).
bool inChildProcess(const std::function<bool()>& check, bool withoutRoot = false, unsigned seconds = 10);

} // namespace porvane::test
