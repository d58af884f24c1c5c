// Things chosen by their pictures.
#pragma once

#include <QWidget>
#include <functional>

#include "screens/frame/field.h"

class QPainter;

using PaintPicture = std::function<void(QPainter& painter, const QRectF& area, int value)>;

/// A grid of pictures, one of which is chosen: by a click, or by the arrow keys, which go round
/// both ends.
struct PictureGrid {
  QString Name;     // of the grid; a picture's is this with its number behind an underscore
  QString Caption;  // "Chip set %1", for tool tips and screen readers; counted from 1
  int Count = 1;
  int Columns = 1;
  QSize Size;
  PaintPicture Paint;
};

QWidget* MakePictureChooser(const PictureGrid& grid, const RecordField<int>& field, int first);

/// A picture of what has been chosen.
QWidget* MakePicture(const QString& name, const QString& caption, QSize size,
                     std::function<void(QPainter& painter, const QRectF& area)> paint);
