#include "editing/NumberedTitle.h"

#include "device/Format.h"

namespace inspector::editing {

Text BaseNameOf(TextView title) {
  const std::size_t mark = title.find(u'#');
  if (mark == TextView::npos) return Text(title);
  return Text(title.substr(0, mark == 0 ? 0 : mark - 1));
}

Text NumberedTitle(TextView baseName, int number) {
  return device::Format(u"%s #%d", baseName, number);
}

}  // namespace inspector::editing
