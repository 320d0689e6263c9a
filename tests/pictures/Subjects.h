#pragma once

class Album;

/// Each of these brings a part of the panel into its states and saves a picture of each.
void takeArea(Album& album);
void takeDialogs(Album& album);
void takeLimits(Album& album);
void takeSearch(Album& album);
void takeTree(Album& album);
void takeTreePanel(Album& album);
