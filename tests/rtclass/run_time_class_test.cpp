// tests/rtclass/run_time_class_test.cpp
//
// The two library descriptors, and a client hierarchy declared with the macros: Shape and Named
// (creatable) under the roots, Label deriving from both, Caption below Label.
#include "zt/rtclass/run_time_class.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace zt::test {
namespace {

class Shape : public ZtRxRunTimeClass {
  ZT_DECLARE_RX_CLASS(Shape)
};

class Named : public ZtRxDynCreateClass {
  ZT_DECLARE_RX_DYNCREATE(Named)
};

class Label : public Shape, public Named {
  ZT_DECLARE_RX_DYNCREATE(Label)
  ZtRxDynCreateClass* InitObject() override {
    text = "initialised";
    return this;
  }
  std::string text;
};

class Caption : public Label {
  ZT_DECLARE_RX_DYNCREATE(Caption)
};

ZT_DEFINE_RX_CLASS(Shape, 100, ZtRxRunTimeClass);
ZT_DEFINE_RX_DYNCREATE(Named, 101, ZtRxDynCreateClass);
ZT_DEFINE_RX_DYNCREATE(Label, 102, Shape, Named);
ZT_DEFINE_RX_DYNCREATE(Caption, 103, Label);

std::unique_ptr<ZtRxDynCreateClass> Create(const ZtRxClassInfo& ci) {
  return std::unique_ptr<ZtRxDynCreateClass>(ci.NewObject());
}

TEST(RunTimeClass, TheLibraryDescriptors) {
  EXPECT_EQ(ZtRxRunTimeClass::GetStaticCI().NewObject(), nullptr);
  auto o = Create(ZtRxDynCreateClass::s_classInfo);
  ASSERT_NE(o, nullptr);
  EXPECT_EQ(o->GetClassID(), 1);
  EXPECT_STREQ(o->GetClassNameW(), "ZtRxDynCreateClass");
  EXPECT_TRUE(o->IsClassOf("ZtRxRunTimeClass") && o->IsClassOf(&ZtRxRunTimeClass::s_classInfo));
  EXPECT_FALSE(o->IsTypeOf("ZtRxRunTimeClass"));
  const ZtRxRunTimeClass root;
  EXPECT_FALSE(root.IsClassOf("ZtRxDynCreateClass"));
  EXPECT_EQ(root.GetClassID(), 0);
}

TEST(RunTimeClass, AClassWithTwoBasesIsAKindOfEverythingAboveEither) {
  const Caption caption;
  // Caption holds two ZtRxRunTimeClass subobjects; both answer with Caption's descriptor.
  for (const ZtRxRunTimeClass* o :
       {static_cast<const ZtRxRunTimeClass*>(static_cast<const Shape*>(&caption)),
        static_cast<const ZtRxRunTimeClass*>(static_cast<const Named*>(&caption))}) {
    EXPECT_EQ(o->GetClassID(), 103);
    EXPECT_TRUE(o->IsTypeOf("Caption") && o->IsTypeOf(&Caption::s_classInfo));
    for (const ZtRxClassInfo* ci :
         {&Label::s_classInfo, &Shape::s_classInfo, &Named::s_classInfo,
          &ZtRxDynCreateClass::s_classInfo, &ZtRxRunTimeClass::s_classInfo}) {
      EXPECT_TRUE(o->IsClassOf(ci) && o->IsClassOf(ci->GetClassNameW())) << ci->GetClassNameW();
      EXPECT_FALSE(o->IsTypeOf(ci) || o->IsTypeOf(ci->GetClassNameW())) << ci->GetClassNameW();
    }
    EXPECT_FALSE(o->IsClassOf("caption"));  // names compare exactly
  }
  EXPECT_FALSE(Shape().IsClassOf("Named"));
  EXPECT_FALSE(Named::s_classInfo.IsClassOf(&Shape::s_classInfo));
  const Label a;
  const Label b;
  EXPECT_TRUE(static_cast<const Shape&>(a).IsSameClass(static_cast<const Shape&>(b)));
  EXPECT_FALSE(static_cast<const Shape&>(caption).IsSameClass(static_cast<const Shape&>(a)));
}

TEST(RunTimeClass, CreationByDescriptorAndTheWalksStop) {
  auto made = Create(Label::GetStaticCI());
  ASSERT_NE(made, nullptr);
  EXPECT_TRUE(made->IsTypeOf(&Label::s_classInfo));
  EXPECT_EQ(static_cast<Label*>(made.get())->text, "initialised");  // the override's InitObject
  EXPECT_EQ(Shape::s_classInfo.NewObject(), nullptr);
  ZtRxClassInfo twin("Shape", 7, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
  ZtRxClassInfo gap("Gap", 8, nullptr, &Named::s_classInfo, nullptr, &twin, nullptr, nullptr);
  EXPECT_TRUE(gap.IsClassOf("Named"));
  EXPECT_FALSE(gap.IsClassOf("Shape") || gap.IsClassOf(&twin));  // twin sits behind a null
  EXPECT_TRUE(twin.IsTypeOf("Shape"));                           // one name, two descriptors
  EXPECT_FALSE(twin.IsTypeOf(&Shape::s_classInfo));
}

}  // namespace
}  // namespace zt::test
