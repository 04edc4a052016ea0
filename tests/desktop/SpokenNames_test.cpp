// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/SpokenNames.h"

namespace tessel {

namespace {

QString spoken(QLabel& label) {
    return QAccessible::queryAccessibleInterface(&label)->text(QAccessible::Name);
}

}  // namespace

TEST(SpokenValues, AreSaidBehindTheNameAndAsTheyAreNow) {
    QLabel label;
    label.setAccessibleName(u"EM1 mean"_s);
    EXPECT_EQ(spoken(label), u"EM1 mean"_s) << "nothing is shown yet";
    label.setText(u"31.25"_s);
    EXPECT_EQ(spoken(label), u"EM1 mean: 31.25"_s);
    label.setText(u"31.26"_s);
    EXPECT_EQ(spoken(label), u"EM1 mean: 31.26"_s);
    const QAccessibleInterface* const interface = QAccessible::queryAccessibleInterface(&label);
    EXPECT_EQ(interface->role(), QAccessible::StaticText);
    EXPECT_TRUE(interface->state().readOnly);
}

TEST(TheButtonThatClearsABox, HasAName) {
    QLineEdit box;
    box.setClearButtonEnabled(true);
    nameClearButton(box);
    ASSERT_EQ(box.findChildren<QToolButton*>().size(), 1);
    EXPECT_EQ(box.findChild<QToolButton*>()->accessibleName(), u"Clear"_s);
}

TEST(SpokenValues, LeaveOtherLabelsAsTheyAre) {
    QLabel plain(u"In force now: 2 rows"_s);
    EXPECT_EQ(spoken(plain), u"In force now: 2 rows"_s);
}

}  // namespace tessel
