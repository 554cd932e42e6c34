#pragma once

class GuideStage;

/// What the person does for the pictures of each page of the guide. They can be called in any order: each opens the
/// scene that it needs.
namespace GuidePage {

/// While no scene was opened yet.
void start(GuideStage &stage);

void firstLook(GuideStage &stage);
void selectAndRead(GuideStage &stage);
void createSetsAndEntries(GuideStage &stage);
void assignSets(GuideStage &stage);
void find(GuideStage &stage);
void editMany(GuideStage &stage);
void lockAndUndo(GuideStage &stage);
void save(GuideStage &stage);
void shareAssets(GuideStage &stage);
void preferences(GuideStage &stage);

} // namespace GuidePage
