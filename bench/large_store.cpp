#include "large_store.h"

using namespace Qt::StringLiterals;

namespace bench {

void fillStore(testsupport::TemporaryStore& store, int orders, int linesEach)
{
    store.execute(
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?)"
        " INSERT INTO Orders (Number, Order_Date, Open_Close, CustomerName)"
        " SELECT i, '2026-01-02', CASE WHEN i < ? THEN -1 ELSE 0 END, 'לקוח ' || i FROM n"_s,
        {orders, orders});
    // The lines of different orders are interleaved, because a real table never stores an order's
    // lines in one block.
    store.execute(u"WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < ?)"
                  " INSERT INTO Cuts (Code, Name, MyWidth, MYHeight, Mashkof_W, Mashkof_H, "
                  "Kanaf_W, Kanaf_H, Glass_W,"
                  " Glass_H, Reshet_W, Reshet_H, Mashof_Kind, Mahkof_Color, Mahkof_Count, "
                  "Kanaf_Kind, Kanaf_Color,"
                  " Kanaf_Count, Glass_Kind, Glass_Color, Glass_Count, Reshet_Kind, Reshet_Color, "
                  "Reshet_Count, Kind,"
                  " MyWidth_2, MYHeight_2, U_Thick, U_Cut, U_Vasa, Shalav_Thick, Shalav_Width, "
                  "Shalav_Count, Order_Num,"
                  " Argaz_Width, Argaz_Height, Order_Date, NUM)"
                  " SELECT i + 1, 'בלגי 7000', 120.5, 100.25, 119.5, 98.75, 58.15, 92.75, 53.55, "
                  "84.25, 57.1, 92,"
                  " 'פרופיל', 'לבן', 2, 'כנף', 'לבן', 4, 'שקוף', 'ללא', 2, 'רשת', 'שחור', 2, "
                  "'אור', 0, 0, 0, 0, 0, 0, 0,"
                  " 0, i % ? + 1, 0, 0, '2026-01-02', i / ? + 1 FROM n"_s,
                  {orders * linesEach - 1, orders, orders});
}

} // namespace bench
