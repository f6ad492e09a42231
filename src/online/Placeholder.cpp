// Grows with the online module; keeps the library target non-empty until then.
