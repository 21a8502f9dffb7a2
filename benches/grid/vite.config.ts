import { defineConfig } from "vite";

export default defineConfig({ base: "./", build: { outDir: "../../build/grid-bench", emptyOutDir: true, modulePreload: false, chunkSizeWarningLimit: 5000 }, logLevel: "warn" });
