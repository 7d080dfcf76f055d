// The runtime's own protocol extension of databases.
#pragma once

/// Makes every OdDbDatabase answer to OdDbBaseDatabasePE, until its class ends.
void attachDatabaseExtension();
