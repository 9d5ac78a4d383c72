#pragma once

class QWidget;

// Scrolls the areas around the widget until it is in sight, with this room beside it where there is some.
void scrollIntoSight(QWidget *widget, int roomBeside = 50);
