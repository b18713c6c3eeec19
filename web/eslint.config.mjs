import tseslint from "typescript-eslint";

export default tseslint.config(
    { ignores: ["dist/", "node_modules/"] },
    {
        files: ["**/*.ts"],
        extends: [...tseslint.configs.strictTypeChecked, ...tseslint.configs.stylisticTypeChecked],
        languageOptions: {
            parserOptions: { projectService: true, tsconfigRootDir: import.meta.dirname ?? "." },
        },
        rules: {
            // What a session says never becomes markup.
            "no-restricted-properties": [
                "error",
                ...["innerHTML", "outerHTML", "insertAdjacentHTML", "write", "setHTMLUnsafe"].map(
                    (property) => ({ property, message: "Texts of a session go in as text." }),
                ),
            ],
            "no-implied-eval": "error",
            "no-eval": "error",
            "@typescript-eslint/restrict-template-expressions": ["error", { allowNumber: true }],
            "@typescript-eslint/no-non-null-assertion": "off",
            "@typescript-eslint/no-confusing-void-expression": "off",
        },
    },
);
