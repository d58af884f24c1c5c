// What surrounds the felt: the rail with its rack, the stick person, the switch and the placard.
#pragma once

class QPainter;

/// The rail all round, with the wells of the rack and of the markers.
void PaintRail(QPainter& painter);

/// The shadow that the rail throws on the felt.
void PaintRailShadow(QPainter& painter);

void PaintStickPerson(QPainter& painter);

/// The brass switch that turns the right-hand panel over.
void PaintPanelSwitch(QPainter& painter);

/// The sign with the limits of the table.
void PaintPlacard(QPainter& painter);
