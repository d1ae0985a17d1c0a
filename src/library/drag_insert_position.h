// Where a drop inside a list of rows puts the dragged rows: the upper half of a row means in front
// of it, the lower half behind it, empty space under the rows the end, and a point within one row
// height of the top the start.
#pragma once

#include "kx/KxPlatform.h"

// The geometry of a list as the insert position reads it, in client coordinates.
class IKxRowGeometry {
public:
    virtual ~IKxRowGeometry() = default;
    virtual int HitRow(POINT point) = 0;              // -1 for no row
    virtual bool RowBounds(int row, RECT* bounds) = 0;  // LVIR_BOUNDS
    virtual RECT ClientRect() = 0;
    virtual int RowCount() = 0;
};

// The insert position, from 0 to the number of rows.
int KxInsertPosition(IKxRowGeometry& list, POINT point);
