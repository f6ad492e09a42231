// Grows with the planning module; keeps the library target non-empty until then.
