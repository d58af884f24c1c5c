// What hangs in the frame above the right-hand panel.
#pragma once

class QPainter;

/// The stick person, in lamplight, with the stick held across the chest.
void PaintStickFigure(QPainter& painter);

/// The room behind the frame with nobody in it.
void PaintEmptyFrame(QPainter& painter);

/// The last throw in large figures: its dice, total, call and net result.
void PaintCallBoard(QPainter& painter);
