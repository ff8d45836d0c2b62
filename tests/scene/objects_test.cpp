// Object lists and point arrays.
#include "test_support.h"

namespace {

class ObjectTest : public QmrTest {};

TEST_F(ObjectTest, NewestObjectIsHead) {
    ASSERT_NE(Layer_NewFirst(), nullptr);
    TriangleData t{};
    Object* a = Add_Triangle(&t);
    Object* b = Add_Triangle(&t);
    Object* c = Add_Triangle(&t);
    Layer* l = g.scene.Current_Layer;
    EXPECT_EQ(l->first_object, c);
    EXPECT_EQ(c->next, b);
    EXPECT_EQ(b->next, a);
    EXPECT_EQ(a->next, nullptr);
    EXPECT_EQ(c->prev, nullptr);
    EXPECT_EQ(a->prev, b);
}

}  // namespace
