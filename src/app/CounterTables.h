#pragma once

#include "app/Database.h"
#include "app/Prompts.h"

/// Makes the missing tables tbl_counter, tbl_shift and tbl_booking_clipboard of counters 1 to counterCount after
/// counter 1's, and the counters' rows in tbl_system. A statement that fails is skipped; a database that cannot be
/// reached is shown with code 5.
void CreateCounterTables(Database &database, Prompts &prompts, int counterCount);

/// True when the table of this special group exists. Throws DbError.
bool SpecialGroupTableExists(Database &database, int group);
