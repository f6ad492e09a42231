// Grows with the database manager.
