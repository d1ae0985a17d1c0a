// The insert position of a drag inside the chosen-tracks list.
#include "library/drag_insert_position.h"

int KxInsertPosition(IKxRowGeometry& list, POINT point) {
    const int row = list.HitRow(point);
    if (row >= 0) {
        RECT bounds;
        if (!list.RowBounds(row, &bounds)) return row + 1;
        const LONG middle = bounds.top + (bounds.bottom - bounds.top) / 2;
        return point.y > middle ? row + 1 : row;
    }
    RECT first;
    if (!list.RowBounds(0, &first)) return 0;
    const LONG distance = point.y - list.ClientRect().top;
    if ((distance < 0 ? -distance : distance) < first.bottom - first.top) return 0;
    return list.RowCount();
}
