// Grows with the simlink module; keeps the library target non-empty until then.
