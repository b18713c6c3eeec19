#include "reference_host/Registrar.h"

#include <gmock/gmock.h>

#include "reference_host/Ref.h"

namespace refhost {
namespace {

using ::testing::ElementsAre;

class RegistrarTest : public ::testing::Test {
protected:
    const Ref<Registrar> registrar_ = Ref<Registrar>::Adopt(new Registrar);
};

TEST_F(RegistrarTest, KeepsEveryVersionInOrder) {
    registrar_->DeclareInterfaceVersion(1, 9);
    registrar_->DeclareInterfaceVersion(2, 0);
    EXPECT_THAT(registrar_->InterfaceVersions(),
                ElementsAre(Registrar::InterfaceVersion{1, 9}, Registrar::InterfaceVersion{2, 0}));
}

TEST_F(RegistrarTest, KeepsTheIdentity) {
    registrar_->SetPlugInIdentity("7a1c", u"A plug-in");
    EXPECT_THAT(registrar_->Identities(), ElementsAre(Registrar::Identity{"7a1c", u"A plug-in"}));
}

TEST_F(RegistrarTest, TellsFormatsToOpenFromFormatsToSave) {
    const kelcore::char16* const extensions[] = {u"one", u"two"};
    registrar_->RegisterOpenFormat(u"Session", extensions, 2);
    registrar_->RegisterSaveFormat(u"Session", extensions, 1);
    EXPECT_THAT(registrar_->OpenFormats(),
                ElementsAre(Registrar::Format{u"Session", {u"one", u"two"}}));
    EXPECT_THAT(registrar_->SaveFormats(), ElementsAre(Registrar::Format{u"Session", {u"one"}}));
}

}  // namespace
}  // namespace refhost
