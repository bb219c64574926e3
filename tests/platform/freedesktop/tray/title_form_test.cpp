#include "platform/freedesktop/tray/title_form.h"

#include <gtest/gtest.h>

namespace lumowatt::freedesktop {

TEST(TitleForm, IsTilesOnPanelsThatShowIconsAlone) {
  EXPECT_EQ(titleForm("kded5"), TitleForm::tiles);
  EXPECT_EQ(titleForm("kded6"), TitleForm::tiles);
  EXPECT_EQ(titleForm("lxqt-panel"), TitleForm::tiles);
}

TEST(TitleForm, IsTilesOnXfceWhateverTheNumberOfItsTray) {
  EXPECT_EQ(titleForm("panel-2-systray"), TitleForm::tiles);
  EXPECT_EQ(titleForm("panel-13-systra"), TitleForm::tiles);  // the kernel keeps 15 characters
  EXPECT_EQ(titleForm("panel-1234-syst"), TitleForm::tiles);
}

TEST(TitleForm, IsWideOnWaybar) { EXPECT_EQ(titleForm("waybar"), TitleForm::wide); }

TEST(TitleForm, IsALabelOnPanelsThatShowOne) {
  EXPECT_EQ(titleForm("gnome-shell"), TitleForm::label);
  EXPECT_EQ(titleForm("mate-panel"), TitleForm::label);
  EXPECT_EQ(titleForm("notification-ar"), TitleForm::label);
  EXPECT_EQ(titleForm("indicator-apple"), TitleForm::label);
}

TEST(TitleForm, IsALabelOnAPanelThatIsNotKnown) {
  EXPECT_EQ(titleForm(""), TitleForm::label);
  EXPECT_EQ(titleForm("xfce4-panel-but-another"), TitleForm::label);
  for (const char* process : {"mykded5", "kded", "kded55", "waybar2", "panel-foo", "panel-2-clock",
                              "panel--systray", "panel-2", "panel-2-systray2", "lxqt-pane"}) {
    EXPECT_EQ(titleForm(process), TitleForm::label) << process;
  }
}

}  // namespace lumowatt::freedesktop
