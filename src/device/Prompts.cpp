#include "device/Prompts.h"

namespace inspector::device {

void Alert(Prompts& prompts, const Text& text) {
  prompts.Show({text, u"Alert", Buttons::Ok, Icon::Information});
}

void ShowError(Prompts& prompts, const Text& text) {
  prompts.Show({text, u"Error", Buttons::Ok, Icon::Hand});
}

bool ConfirmCaution(Prompts& prompts, const Text& text) {
  return prompts.Show({text, u"Caution", Buttons::YesNo, Icon::Exclamation}) == Answer::Yes;
}

bool ConfirmLoss(Prompts& prompts, const Text& text) {
  return prompts.Show({text, u"Caution", Buttons::YesNo, Icon::Exclamation, true}) == Answer::Yes;
}

bool ConfirmWarning(Prompts& prompts, const Text& text) {
  return prompts.Show({text, u"Warning", Buttons::YesNo, Icon::Exclamation}) == Answer::Yes;
}

bool ConfirmUpdate(Prompts& prompts, const Text& text) {
  return prompts.Show({text, u"Update Required", Buttons::OkCancel, Icon::Exclamation}) == Answer::Ok;
}

bool ConfirmDataAlert(Prompts& prompts, const Text& text) {
  return prompts.Show({text, u"Data Alert", Buttons::OkCancel, Icon::Exclamation}) == Answer::Ok;
}

}  // namespace inspector::device
