// Grows with the documents module; keeps the library target non-empty until then.
