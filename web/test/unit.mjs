// Bundles the unit tests and runs them with Node's own runner.
import { spawnSync } from "node:child_process";
import { mkdtemp, readdir, rm } from "node:fs/promises";
import os from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const root = path.dirname(fileURLToPath(import.meta.url));
const names = (await readdir(path.join(root, "unit"))).filter((name) => name.endsWith(".test.ts"));
const folder = await mkdtemp(path.join(os.tmpdir(), "orvo-page-"));
try {
    await build({
        entryPoints: names.map((name) => path.join(root, "unit", name)),
        bundle: true,
        platform: "node",
        format: "esm",
        outdir: folder,
        outExtension: { ".js": ".mjs" },
        define: { FIXTURES: JSON.stringify(path.join(root, "fixtures")) },
    });
    const files = names.map((name) => path.join(folder, name.replace(/\.ts$/u, ".mjs")));
    const { status } = spawnSync(process.execPath, ["--test", ...files], { stdio: "inherit" });
    process.exitCode = status ?? 1;
} finally {
    await rm(folder, { recursive: true });
}
