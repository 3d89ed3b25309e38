#include "Quillbox/activation/UserInteraction.h"

#include "Platform/Processes.h"
#include "Quillbox/activation/AppDelegate.h"
#include "Quillbox/activation/PanelWindow.h"

namespace qb {

void UserInteraction::beginUserInteraction() {
  if (++userInteractionLevel_ != 1) return;
  appDelegate_.maintainTapRules();
  appDelegate_.panelWindow().setInteractiveLevel();
  Processes& processes = appDelegate_.platform().processes();
  processes.setFrontProcess(processes.getCurrentProcess());
}

void UserInteraction::endUserInteraction() {
  if (--userInteractionLevel_ != 0) return;
  appDelegate_.panelWindow().setLevelForActivationMethod();
  appDelegate_.maintainTapRules();
}

}  // namespace qb
