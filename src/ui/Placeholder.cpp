// The Qt shell grows here.
