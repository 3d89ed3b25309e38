#include "Quillbox/activation/AboutQuillbox.h"

#include <memory>

#include "Platform/ApplicationControl.h"
#include "Platform/Dialogs.h"
#include "Platform/Graphics.h"
#include "Quillbox/activation/Quillbox.h"
#include "Quillbox/activation/UserInteractionBracket.h"
#include "QuillboxCommon/Format.h"

namespace qb {

namespace {

Alert informationalAlert(const char* message, std::string text, double width) {
  Alert alert;
  alert.style = AlertStyleInformational;
  alert.accessoryView = std::make_shared<DialogSpacer>(Size{width, 20});
  alert.icon = quillbox->platform().graphics().imageNamed("QuillboxLogo");
  alert.messageText = message;
  alert.informativeText = std::move(text);
  return alert;
}

}  // namespace

void runAboutQuillbox() {
  quillbox->dismissQuillbox();
  const UserInteractionBracket interaction(*quillbox);
  Platform& platform = quillbox->platform();
  const ApplicationControl& program = platform.applicationControl();
  Alert about =
      informationalAlert("Quillbox - Supercharge your Tab key!",
                         stringWithFormat("Version %@\r\r%@", program.shortVersionString(),
                                          program.humanReadableCopyright()),
                         340);
  about.addButtonWithTitle("OK");
  about.addButtonWithTitle("About MASShortcut");
  if (platform.dialogs().runModal(about) != AlertFirstButtonReturn + 1) return;
  Alert recorder = informationalAlert("Quillbox is supercharged by MASShortcut!",
                                      program.textResource("LICENSE", "txt"), 540);
  recorder.addButtonWithTitle("OK");
  platform.dialogs().runModal(recorder);
}

}  // namespace qb
