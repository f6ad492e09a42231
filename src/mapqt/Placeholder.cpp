// The QPainter drawing target grows here.
