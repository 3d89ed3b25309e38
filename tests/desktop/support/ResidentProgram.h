#pragma once

#include <functional>

namespace qb {
class AppDelegate;
}

namespace qb::test {

/// Runs the program whole, on the real desktop, until it ends; `launched` comes right after its
/// launch. Answers the exit status.
int runResidentProgram(int argc, char* argv[], const std::function<void(AppDelegate&)>& launched);

}  // namespace qb::test
