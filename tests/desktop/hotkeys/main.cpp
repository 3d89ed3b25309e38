// The resident program, which at its start asks for the hot key of the identifier that it is given,
// and then goes on with it: "hotkeydialog IDENTIFIER NAME". Says "dialog closed" in between.
#include <string>

#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/windows/SetHotKeyWindowController.h"
#include "QuillboxCommon/Format.h"
#include "QuillboxCommon/Log.h"
#include "ResidentProgram.h"

int main(int argc, char* argv[]) {
  if (argc < 3) return 64;
  return qb::test::runResidentProgram(argc, argv, [argv](qb::AppDelegate&) {
    qb::executeBlockAfterDelay(
        [argv] {
          qb::SetHotKeyWindowController(
              *qb::quillbox,
              qb::stringWithFormat("Please define the Hot Key for %@:", std::string(argv[2])),
              argv[1])
              .runModal();
          qb::quillbox->maintainItemHotKeys();
          qb::log("dialog closed");
        },
        0);
  });
}
