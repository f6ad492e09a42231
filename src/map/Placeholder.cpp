// Grows with the map module; keeps the library target non-empty until then.
