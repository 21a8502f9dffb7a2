import "element-plus/dist/index.css";
import "element-plus/theme-chalk/dark/css-vars.css";
import "./styles/theme.css";
import "./styles/grid.css";
import { createApp } from "vue";
import App from "./App.vue";

createApp(App).mount("#app");
