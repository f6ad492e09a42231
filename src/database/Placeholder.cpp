// Grows with the database module; keeps the library target non-empty until then.
