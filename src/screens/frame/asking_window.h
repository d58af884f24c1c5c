// Whose question a message or a choice is.
#pragma once

class QWidget;

/// Follows which window of the program is in front, from the start of the program on.
void FollowActiveWindow();

/// The window that a screen opened now belongs to: the modal one that waits, else the one that is
/// active or was last, else `other`. A screen that belongs to it brings no further window forward,
/// and gives the focus back to it.
QWidget* AskingWindow(QWidget* other);
