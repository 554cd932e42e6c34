#include "TestMain.h"
class Testtransform : public QObject
{
    Q_OBJECT
};
NK_TEST_MAIN(Testtransform)
#include "test_scene_transform.moc"
