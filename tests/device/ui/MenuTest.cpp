#include "device/ui/Menu.h"

#include "support/Screens.h"

namespace inspector::device::ui {
namespace {

TEST(MenuTest, KeysThatHadNoRoomComeBack) {
  QWidget window;
  window.resize(160, 400);
  Menu menu(QStringLiteral("Tools"), window, &window);
  std::vector<QAction*> actions;
  const QList<QKeySequence> keys = {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R)};
  for (const char* name : {"Repair the counters", "Leaves the menu", "Goes for good"}) {
    actions.push_back(menu.addAction(QLatin1String(name)));
    actions.back()->setShortcuts(keys);
  }
  actions[1]->setParent(&window);
  Q_EMIT menu.aboutToShow();
  for (const QAction* action : actions) ASSERT_TRUE(action->shortcuts().isEmpty());
  menu.removeAction(actions[1]);
  delete actions[2];
  Q_EMIT menu.aboutToHide();
  EXPECT_EQ(actions[0]->shortcuts(), keys);
  EXPECT_EQ(actions[1]->shortcuts(), keys) << "of another menu by now";
}

}  // namespace
}  // namespace inspector::device::ui
