#pragma once

namespace Ui {
class MainWindow;
} // namespace Ui

namespace WindowActions {

// Gives the window's actions their icons and keys and puts them into the menus and on the tool bar.
void setUp(const Ui::MainWindow &ui);

} // namespace WindowActions
